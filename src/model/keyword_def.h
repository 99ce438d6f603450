#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/option_def.h"

namespace quillet {

// One keyword of the command language, or one alias of a keyword (isAlias).
struct KeywordDef {
    std::string name;
    std::string id;
    std::string description;
    std::string summary;
    bool isComplete = false;
    int lineNumber = 0;
    std::vector<OptionDef*> options;
    int serial = 0;
    bool operandsAreModelName = false;
    std::string numTokensInModelName = "1";
    bool operandsReverseForName = false;
    bool operandsNeedFormatting = false;
    bool noNewModel = false;
    bool isDelete = false;
    bool isRename = false;
    bool noDefaults = false;
    bool noOptions = false;
    bool noBlankOperands = true;  // the only flag that starts set
    std::string operandDescription;
    std::string operandSynopsis;
    bool noDocumentation = false;
    bool shortDocumentation = false;
    bool isAlias = false;
    bool preserveOperands = false;
    bool deprecated = false;
    // On a keyword: the aliases naming it. On an alias: the keyword it stands for.
    std::vector<KeywordDef*> aliases;

    explicit KeywordDef(int serialNumber) : serial(serialNumber) {}
    KeywordDef(const KeywordDef&) = delete;
    KeywordDef& operator=(const KeywordDef&) = delete;

    // An empty word (a quoted "") adds nothing to the description, while the
    // other texts get a lone blank for it; authors rely on both.
    void appendDescription(std::string_view word) {
        if (!word.empty()) description.append(word).push_back(' ');
    }
    void appendSummary(std::string_view word) { summary.append(word).push_back(' '); }
    void appendOperandDescription(std::string_view word) {
        operandDescription.append(word).push_back(' ');
    }
    void appendOperandSynopsis(std::string_view word) { operandSynopsis.append(word).push_back(' '); }

    void addOption(OptionDef* option) { options.push_back(option); }
    void addAlias(KeywordDef* alias) { aliases.push_back(alias); }
    bool hasAliases() const { return !aliases.empty(); }
};

}  // namespace quillet
