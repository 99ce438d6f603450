#pragma once

#include <fstream>

#include "model/run_context.h"

namespace quillet {

// Opens (truncating) one generated file in the context's output directory.
// A failure is reported on the error handler with the bare file name.
bool openOutputFile(std::ofstream& stream, const RunContext& context, const char* fileName);

}  // namespace quillet
