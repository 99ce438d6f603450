#pragma once

#include "output/output_file.h"
#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

inline constexpr const char* kIdDefinitionsFile = "nq_command_id.cxx";

// Defines every ID object that the header declares, numbered by serial.
bool writeIdDefinitions(const DefinitionSet& definitions, const RunContext& context, OutputFile& out);

}  // namespace quillet
