#pragma once

#include "output/output_file.h"
#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// One table-of-contents entry per documented record, in list order. Only
// the open can fail, so the result is always true.
bool writeCommandIndex(const DefinitionSet& definitions, const RunContext& context, OutputFile& out);

}  // namespace quillet
