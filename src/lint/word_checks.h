#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "lint/rules.h"

namespace quillet::lint {

// The directive word that `word`, an argument, looks like a misspelling of:
// a word ending in a colon (or a colon and a carriage return) within a small
// edit distance of a directive word, letter case aside.
std::optional<std::string_view> misspeltDirective(std::string_view word);

struct Finding {
    RuleId rule;
    std::string message;
};

// An integer the tool accepts (a lookup value, an integer default) but reads
// otherwise than written: characters it ignores, or a value that 32 bits do
// not hold.
std::optional<Finding> checkInteger(std::string_view word);
// A double default or limit that the conversion takes out of range.
std::optional<Finding> checkDouble(std::string_view word);
// A limit of more than one word: only the first is read, all are written.
std::optional<Finding> checkLimitWords(std::string_view text);

// A text written between double quotes in the generated C++ source, holding
// what would end the literal or start an escape sequence there.
bool breaksStringLiteral(std::string_view text);

}  // namespace quillet::lint
