#pragma once

#include <vector>

#include "model/option_def.h"
#include "model/text.h"

namespace quillet {

// One keyword of the command language, or one alias of a keyword (isAlias).
struct KeywordDef {
    Text name;
    Text id;
    Text description;
    Text summary;
    Text operandDescription;
    Text operandSynopsis;
    Text numTokensInModelName;  // "1" unless KEY_OPERANDS_ARE_MODEL_NAME: gives one
    std::vector<OptionDef*> options;
    // On a keyword: the aliases naming it. On an alias: the keyword it stands for.
    std::vector<KeywordDef*> aliases;
    int lineNumber = 0;
    int serial = 0;
    bool isComplete = false;
    bool operandsAreModelName = false;
    bool operandsReverseForName = false;
    bool operandsNeedFormatting = false;
    bool noNewModel = false;
    bool isDelete = false;
    bool isRename = false;
    bool noDefaults = false;
    bool noOptions = false;
    bool noBlankOperands = true;  // the only flag that starts set
    bool noDocumentation = false;
    bool shortDocumentation = false;
    bool isAlias = false;
    bool preserveOperands = false;
    bool deprecated = false;

    KeywordDef(int serialNumber, Text one) : numTokensInModelName(one), serial(serialNumber) {}
    KeywordDef(const KeywordDef&) = delete;
    KeywordDef& operator=(const KeywordDef&) = delete;
};

}  // namespace quillet
