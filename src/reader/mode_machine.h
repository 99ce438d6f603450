#pragma once

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Switches the reader to directive `directive` (or runs the final check for
// MODE_END_OF_INPUT): checks that the directive in force was complete, closes
// and opens keywords and options, and applies flag directives. Returns false
// after reporting why the definition is wrong.
bool changeMode(DefinitionSet& definitions, const RunContext& context, int directive, int line);

}  // namespace quillet
