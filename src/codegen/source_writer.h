#pragma once

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Writes nq_command_id.cxx and then nq_command_init.cxx into the context's
// output directory; true when both were completed.
bool writeSourceFiles(const DefinitionSet& definitions, const RunContext& context);

}  // namespace quillet
