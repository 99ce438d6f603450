#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "diff/change.h"
#include "diff/option_values.h"
#include "model/definition_set.h"

namespace quillet::diff {

// One comparison of two definitions: every name a script may type, keyword
// or alias, in name order (definition_comparer.cpp), and for a keyword both
// sides have, its options in name order (option_comparer.cpp). Walking the
// names in order leaves the changes in order, so only the few changes of one
// keyword or option need sorting, by rule.
class Comparison {
public:
    Comparison(const DefinitionSet& oldSet, const DefinitionSet& newSet, TextArena& values)
        : old_(oldSet), new_(newSet), values_(values) {}
    ChangeList run();

private:
    using Value = std::optional<Text>;

    struct Name;
    static std::vector<Name> namesOf(const DefinitionSet& oldSet, const DefinitionSet& newSet);
    void compareName(const Name& name);
    void compareKeyword(const KeywordDef& oldKeyword, const KeywordDef& newKeyword);
    // The options of the command `name` runs on each side, reported under
    // `name`; `sameKeyword`: both commands are the keyword `name` itself.
    void compareOptions(Text name, const KeywordDef& oldCommand, const KeywordDef& newCommand, bool sameKeyword);
    void compareOptionTexts(Text keyword, const OptionDef& oldOption, const OptionDef& newOption);
    void compareOption(Text keyword, const OptionDef& oldOption, const OptionDef& newOption);
    void compareLimit(Text keyword, const OptionDef& oldOption, const OptionDef& newOption, Limit limit);
    bool sameLimitText(const OptionDef& oldOption, const OptionDef& newOption, Limit limit) const;
    void compareLookupNames(Text keyword, const OptionDef& oldOption, const OptionDef& newOption);

    // A lookup table's names in name order, each with its first value (a
    // name given twice stands for that one, as a symbolic default resolves
    // it). Made once a table: many options share one.
    struct Entry {
        Text name;
        std::int32_t value;
    };
    using Entries = std::vector<Entry>;
    using EntriesByTable = std::unordered_map<const LookupTableDef*, Entries>;
    static const Entries& entriesOf(const LookupTableDef* table, EntriesByTable& made);

    void keywordChange(Rule rule, const KeywordDef* oldKeyword, const KeywordDef* newKeyword, Value oldValue = {},
                       Value newValue = {});
    void optionChange(Rule rule, Text keyword, const OptionDef* oldOption, const OptionDef* newOption,
                      Value oldValue = {}, Value newValue = {});
    void aliasChange(Rule rule, Text alias, Value oldValue, Value newValue);
    Text keep(std::string_view value) { return values_.keep(value); }
    Text keepQuoted(Text text);
    // Sorts the changes of one keyword or option by rule.
    void closeGroup();

    const DefinitionSet& old_;
    const DefinitionSet& new_;
    TextArena& values_;
    LimitReader limits_;
    EntriesByTable oldEntries_;
    EntriesByTable newEntries_;
    ChangeList changes_;
    std::string quoted_;  // reused: descriptions are long, and many may change
    std::size_t groupStart_ = 0;
};

}  // namespace quillet::diff
