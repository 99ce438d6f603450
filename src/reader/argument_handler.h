#pragma once

#include "model/definition_set.h"
#include "model/run_context.h"
#include "nqtoken.h"

namespace quillet {

// Applies word `index` of the line to the directive in force. Returns false
// after reporting why the word is refused.
bool handleArgumentToken(DefinitionSet& definitions, const RunContext& context, const nqtoken_list* tokens,
                         int index);

}  // namespace quillet
