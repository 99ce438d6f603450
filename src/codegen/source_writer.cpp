#include "codegen/source_writer.h"

#include <fstream>

#include "codegen/id_definitions_writer.h"
#include "codegen/init_source_writer.h"

namespace quillet {

bool writeSourceFiles(const DefinitionSet& definitions, const RunContext& context) {
    // One stream object serves both files, so its format flags carry over.
    std::ofstream out;
    return writeIdDefinitions(definitions, context, out) && writeInitSource(definitions, context, out);
}

}  // namespace quillet
