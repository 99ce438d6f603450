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

// One comparison of two definitions, collecting changes as it goes: the
// keywords and aliases (definition_comparer.cpp), then each option that
// both sides have (option_comparer.cpp).
class Comparison {
public:
    Comparison(const DefinitionSet& oldSet, const DefinitionSet& newSet) : old_(oldSet), new_(newSet) {}
    std::vector<Change> run();

private:
    using Value = std::optional<std::string>;

    void compareKeywords();
    void compareAliases();
    void compareKeyword(const KeywordDef& oldKeyword, const KeywordDef& newKeyword);
    void compareOptions(const KeywordDef& oldKeyword, const KeywordDef& newKeyword);
    void compareOption(std::string_view keyword, const OptionDef& oldOption, const OptionDef& newOption);
    void compareLimit(std::string_view keyword, const OptionDef& oldOption, const OptionDef& newOption, Limit limit);
    void compareLookupNames(std::string_view keyword, const OptionDef& oldOption, const OptionDef& newOption);

    void keywordChange(Rule rule, const KeywordDef* oldKeyword, const KeywordDef* newKeyword, Value oldValue = {},
                       Value newValue = {});
    void optionChange(Rule rule, std::string_view keyword, const OptionDef* oldOption, const OptionDef* newOption,
                      Value oldValue = {}, Value newValue = {});
    void aliasChange(Rule rule, std::string_view alias, Value oldValue, Value newValue);

    using KeywordsByName = std::unordered_map<std::string_view, const KeywordDef*>;
    using AliasTargets = std::unordered_map<std::string_view, std::string_view>;

    const DefinitionSet& old_;
    const DefinitionSet& new_;
    KeywordsByName oldKeywords_;
    KeywordsByName newKeywords_;
    AliasTargets oldAliases_;
    AliasTargets newAliases_;
    LimitReader limits_;
    std::vector<Change> changes_;
};

}  // namespace quillet::diff
