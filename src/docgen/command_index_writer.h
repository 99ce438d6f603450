#pragma once

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Writes Commands.fltoc, one table-of-contents entry per documented record.
bool writeCommandIndex(const DefinitionSet& definitions, const RunContext& context);

}  // namespace quillet
