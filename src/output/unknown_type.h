#pragma once

#include "model/option_type.h"
#include "model/run_context.h"

namespace quillet {

// The report of every writer that meets an option type outside the four it
// knows; returns false for the writer to stop with.
inline bool reportUnknownType(std::optional<OptionType> type, const RunContext& context) {
    context.report.error("Unknown type: %d\n", typeNumber(type));
    return false;
}

}  // namespace quillet
