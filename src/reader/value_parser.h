#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/definition_set.h"
#include "model/reporter.h"
#include "nqtoken.h"

namespace quillet {

// The forms of an integer text, the one grammar of numbers: hexadecimal when
// it holds an x anywhere, else a shift `base<count` when it holds a '<',
// else decimal.
enum class NumberForm : std::uint8_t { Hexadecimal, Shift, Decimal };
NumberForm numberForm(std::string_view text);

// Converts an integer text by its form (trailing characters ignored). False
// when no number can be read.
bool parseNumber(std::string_view text, std::int64_t& value);

// The low 32 bits of a parsed number, as the definition's integers are kept.
inline std::int32_t low32(std::int64_t value) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(value)); }

// Stores word `index` of the line as the option's typed default; a double is
// converted by the tokenizer's own number conversion.
bool parseDefaultValue(DefinitionSet& definitions, const Reporter& report, OptionDef& option,
                       const nqtoken_list* tokens, int index);

enum class Limit { Minimum, Maximum };

// A limit's value as the tool reads it, the one grammar of limits.
struct LimitReading {
    std::int32_t integer = 0;
    double real = 0;
    bool byEntryId = false;  // the integer is the value of the lookup entry the text names
};

// Splits `text` into `words` (the caller's list, reused) and reads the
// value: an integer option's first word as an integer, or else the whole
// text as the ID of a lookup entry of any table; a double option's first
// word as a double. False when the text has no word or gives no value; an
// option of another type has none to give, and is read as true.
bool readLimit(const DefinitionSet& definitions, std::optional<OptionType> type, const char* text,
               nqtoken_list& words, LimitReading& reading);

// Stores a limit text after checking it against the option's known default.
// An integer limit may name a lookup entry ID of any table. `words` is the
// caller's list for splitting the text, reused from one limit to the next.
bool setLimit(DefinitionSet& definitions, const Reporter& report, OptionDef& option, std::string_view text,
              Limit limit, nqtoken_list& words);

// Replaces an integer option's symbolic default by the value of the entry of
// that name in its own lookup table, when there is one.
bool resolveSymbolicDefault(const DefinitionSet& definitions, OptionDef& option);

}  // namespace quillet
