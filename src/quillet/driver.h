#pragma once

#include <string>
#include <vector>

#include "model/run_context.h"
#include "reader/line_reader.h"

namespace quillet {

// One whole run of the tool: reads the switches and the definition, writes
// the chosen output and returns the exit status (0 or 255). The context's
// handlers are created by the run itself.
int runQuillet(const std::vector<std::string>& arguments, LineReader& definition, RunContext context);

}  // namespace quillet
