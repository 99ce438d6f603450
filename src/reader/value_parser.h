#pragma once

#include <cstdint>
#include <string>

#include "model/definition_set.h"
#include "model/run_context.h"
#include "nqtoken.h"

namespace quillet {

// Converts an integer text: hexadecimal when it holds an x anywhere, a shift
// `base<count` when it holds a '<', decimal otherwise. Returns 0 on success
// and 1 on failure (the one operation of the reader that counts this way).
int parseNumber(const std::string& text, std::int64_t& value);

// The low 32 bits of a parsed number, as the definition's integers are kept.
inline std::int32_t low32(std::int64_t value) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(value)); }

// Stores the fourth OPTION: argument as the option's typed default.
bool parseDefaultValue(OptionDef& option, const RunContext& context, const nqtoken_list* tokens, int index);

// Store a limit text after checking it against the option's known default.
// An integer limit may name a lookup entry ID of any table.
bool setMinimum(const DefinitionSet& definitions, const RunContext& context, OptionDef& option,
                const std::string& text);
bool setMaximum(const DefinitionSet& definitions, const RunContext& context, OptionDef& option,
                const std::string& text);

// Replaces an integer option's symbolic default by the value of the entry of
// that name in its own lookup table, when there is one.
bool resolveSymbolicDefault(const DefinitionSet& definitions, OptionDef& option);

}  // namespace quillet
