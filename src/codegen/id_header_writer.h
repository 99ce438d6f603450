#pragma once

#include <ostream>

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Writes nq_command_id.h into the context's output directory.
bool writeIdHeader(const DefinitionSet& definitions, const RunContext& context);

// One enumeration of entry IDs and values for a lookup table.
void writeLookupEnum(const LookupTableDef& table, std::ostream& out);

}  // namespace quillet
