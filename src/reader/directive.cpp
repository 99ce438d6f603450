#include "reader/directive.h"

#include <string>

#include "nqerr.h"

namespace quillet {

void buildDirectiveTables(DefinitionSet& definitions) {
    definitions.directiveTable = {
        {"KEYWORD:", KEYWORD},
        {"KEY_DESCRIPTION:", KEY_DESCRIPTION},
        {"OPTION:", OPTION},
        {"OPT_DESCRIPTION:", OPT_DESCRIPTION},
        {"OPT_LOOKUP:", OPT_LOOKUP},
        {"LOOKUP:", LOOKUP},
        {"OPT_MINIMUM:", OPT_MINIMUM},
        {"OPT_MAXIMUM:", OPT_MAXIMUM},
        {"KEY_OPERANDS_ARE_MODEL_NAME:", KEY_OPERANDS_ARE_MODEL_NAME},
        {"KEY_IS_DELETE:", KEY_IS_DELETE},
        {"KEY_IS_RENAME:", KEY_IS_RENAME},
        {"OPT_READONLY:", OPT_READONLY},
        {"KEY_NO_DEFAULTS:", KEY_NO_DEFAULTS},
        {"KEY_OPERANDS_NEED_FORMATTING:", KEY_OPERANDS_NEED_FORMATTING},
        {"KEY_NO_NEW_MODEL:", KEY_NO_NEW_MODEL},
        {"KEY_ALLOW_BLANK_OPERANDS:", KEY_ALLOW_BLANK_OPERANDS},
        {"KEY_OPERANDS_REVERSE_FOR_NAME:", KEY_OPERANDS_REVERSE_FOR_NAME},
        {"KEY_NO_OPTIONS:", KEY_NO_OPTIONS},
        {"OPT_LOOKUP_CASE_SENSITIVE:", OPT_LOOKUP_CASE_SENSITIVE},
        {"KEY_NO_DOCUMENTATION:", KEY_NO_DOCUMENTATION},
        {"KEY_OPERAND_DESCRIPTION:", KEY_OPERAND_DESCRIPTION},
        {"KEY_SHORT_DOCUMENTATION:", KEY_SHORT_DOCUMENTATION},
        {"KEY_OPERAND_SYNOPSIS:", KEY_OPERAND_SYNOPSIS},
        {"KEY_PRESERVE_OPERANDS:", KEY_PRESERVE_OPERANDS},
        {"KEY_DEPRECATED:", KEY_DEPRECATED},
        {"KEY_SUMMARY:", KEY_SUMMARY},
    };
    definitions.typeNames = {
        {"NQ_INT_TYPE", OptionType::NQ_INT_TYPE},
        {"NQ_BOOL_TYPE", OptionType::NQ_BOOL_TYPE},
        {"NQ_DOUBLE_TYPE", OptionType::NQ_DOUBLE_TYPE},
        {"NQ_STRING_TYPE", OptionType::NQ_STRING_TYPE},
    };
}

int lookupDirective(const DefinitionSet& definitions, const RunContext& context, std::string_view word) {
    // Every directive word ends in a colon; most words are arguments, so
    // this spares them the table look-up.
    if (word.empty() || word.back() != ':') return -1;
    auto found = definitions.directiveTable.find(word);
    if (found == definitions.directiveTable.end()) return -1;
    context.report.progress("Changing mode, new Mode = %s (enum=%d)\n", found->first.c_str(),
                found->second);
    return found->second;
}

}  // namespace quillet
