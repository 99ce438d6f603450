#pragma once

#include <string_view>

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// The directive words of the definition language. The numbers are fixed;
// 6, 14 and 25 are unassigned.
enum Directive : int {
    KEYWORD = 0,
    KEY_DESCRIPTION = 1,
    OPTION = 2,
    OPT_DESCRIPTION = 3,
    OPT_LOOKUP = 4,
    LOOKUP = 5,
    OPT_MINIMUM = 7,
    OPT_MAXIMUM = 8,
    KEY_OPERANDS_ARE_MODEL_NAME = 9,
    KEY_IS_DELETE = 10,
    KEY_IS_RENAME = 11,
    OPT_READONLY = 12,
    KEY_NO_DEFAULTS = 13,
    KEY_OPERANDS_NEED_FORMATTING = 15,
    KEY_NO_NEW_MODEL = 16,
    KEY_ALLOW_BLANK_OPERANDS = 17,
    KEY_OPERANDS_REVERSE_FOR_NAME = 18,
    KEY_NO_OPTIONS = 19,
    OPT_LOOKUP_CASE_SENSITIVE = 20,
    KEY_NO_DOCUMENTATION = 21,
    KEY_OPERAND_DESCRIPTION = 22,
    KEY_SHORT_DOCUMENTATION = 23,
    KEY_OPERAND_SYNOPSIS = 24,
    KEY_PRESERVE_OPERANDS = 26,
    KEY_DEPRECATED = 27,
    KEY_SUMMARY = 28,
};

// Modes that are not directives: before the first directive, and the final
// check at end of input.
constexpr int MODE_NONE = -1;
constexpr int MODE_END_OF_INPUT = -2;

// Fills the directive table and the type-name table.
void buildDirectiveTables(DefinitionSet& definitions);

// The directive value of `word`, or -1 when it is an argument.
int lookupDirective(const DefinitionSet& definitions, const RunContext& context, std::string_view word);

}  // namespace quillet
