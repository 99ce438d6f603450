#pragma once

#include "output/output_file.h"
#include "model/definition_set.h"
#include "model/run_context.h"

namespace quillet {

inline constexpr const char* kInitSourceFile = "nq_command_init.cxx";

// Writes NQ_Command::initialize(), spread over at most twenty numbered
// routines, registering every keyword with its options.
bool writeInitSource(const DefinitionSet& definitions, const RunContext& context, OutputFile& out);

}  // namespace quillet
