#pragma once

#include <cstdint>
#include <string_view>

#include "model/definition_set.h"
#include "model/reporter.h"
#include "nqtoken.h"

namespace quillet {

// Converts an integer text: hexadecimal when it holds an x anywhere, a shift
// `base<count` when it holds a '<', decimal otherwise (trailing characters
// ignored). False when no number can be read.
bool parseNumber(std::string_view text, std::int64_t& value);

// The low 32 bits of a parsed number, as the definition's integers are kept.
inline std::int32_t low32(std::int64_t value) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(value)); }

// Stores word `index` of the line as the option's typed default; a double is
// converted by the tokenizer's own number conversion.
bool parseDefaultValue(DefinitionSet& definitions, const Reporter& report, OptionDef& option,
                       const nqtoken_list* tokens, int index);

enum class Limit { Minimum, Maximum };

// Stores a limit text after checking it against the option's known default.
// An integer limit may name a lookup entry ID of any table. `words` is the
// caller's list for splitting the text, reused from one limit to the next.
bool setLimit(DefinitionSet& definitions, const Reporter& report, OptionDef& option, std::string_view text,
              Limit limit, nqtoken_list& words);

// Replaces an integer option's symbolic default by the value of the entry of
// that name in its own lookup table, when there is one.
bool resolveSymbolicDefault(const DefinitionSet& definitions, OptionDef& option);

}  // namespace quillet
