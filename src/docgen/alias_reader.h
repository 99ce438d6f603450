#pragma once

#include <string_view>

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Reads the aliases file below the context's VELLUM_SRC and appends one
// linked alias record per alias to the keyword list.
bool readAliasFile(DefinitionSet& definitions, const RunContext& context);

// The first record of the keyword list with exactly this name, or null.
KeywordDef* findKeyword(const DefinitionSet& definitions, std::string_view name);

}  // namespace quillet
