#pragma once

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Writes one topic <name>.html per documented record, in list order; stops
// at the first failure.
bool writeCommandPages(const DefinitionSet& definitions, const RunContext& context);

}  // namespace quillet
