#pragma once


#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Reads the aliases file below the context's VELLUM_SRC and appends one
// linked alias record per alias to the keyword list.
bool readAliasFile(DefinitionSet& definitions, const RunContext& context);

// The same for an aliases file at `path`, as the comparer reads one.
bool readAliasFileAt(DefinitionSet& definitions, const Reporter& report, const char* path);

}  // namespace quillet
