#include "codegen/output_file.h"

#include "nqerr.h"

namespace quillet {

bool openOutputFile(std::ofstream& stream, const RunContext& context, const char* fileName) {
    // Binary mode: the sources end their lines with a bare line feed everywhere.
    stream.open(context.outputPath(fileName), std::ios::out | std::ios::trunc | std::ios::binary);
    if (stream.is_open()) return true;
    context.report.error("Error opening file: %s\n", fileName);
    return false;
}

}  // namespace quillet
