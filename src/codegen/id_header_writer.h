#pragma once

#include "output/output_file.h"
#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

inline constexpr const char* kIdHeaderFile = "nq_command_id.h";

// Declares every ID object and one enumeration per lookup table.
bool writeIdHeader(const DefinitionSet& definitions, const RunContext& context, OutputFile& out);

}  // namespace quillet
