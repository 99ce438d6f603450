#pragma once

#include <fstream>
#include <ostream>

#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

// Writes nq_command_init.cxx through `out`, which is (re)opened here.
bool writeInitSource(const DefinitionSet& definitions, const RunContext& context, std::ofstream& out);

// One addLookupTableValue line per entry of the table, by entry name.
void writeLookupValues(const LookupTableDef& table, std::ostream& out);

}  // namespace quillet
