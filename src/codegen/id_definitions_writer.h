#pragma once

#include <fstream>

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Writes nq_command_id.cxx through `out` (opened here, closed on success) so
// that the caller can reopen the same stream on the next file.
bool writeIdDefinitions(const DefinitionSet& definitions, const RunContext& context, std::ofstream& out);

}  // namespace quillet
