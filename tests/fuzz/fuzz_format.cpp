// quillet-format's formatter on arbitrary bytes as the definition file.
// Beyond the sanitizers it checks the formatter's contract: a refusal says
// why; a definition it formats, quillet accepts, and quillet's sources from
// the formatted text are the same byte for byte; the formatted text has no
// line over 254 bytes and formats to itself.
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "format/formatter.h"
#include "fuzz_support.h"
#include "quillet/driver.h"

namespace fs = std::filesystem;
using namespace quillet;

namespace {

// quillet's status and the sources it wrote into `dir`, by name.
std::map<std::string, std::string> sourcesOf(const std::string& definition, const fs::path& dir) {
    static const RunContext quiet = fuzz::quietContext();
    RunContext context = quiet;
    context.outputDir = dir;
    LineReader input(definition);
    std::map<std::string, std::string> outputs;
    outputs["<status>"] = std::to_string(runQuillet({}, input, context));
    for (const auto& entry : fs::directory_iterator(dir)) {
        std::ifstream in(entry.path(), std::ios::binary);
        outputs[entry.path().filename().string()] = std::string(std::istreambuf_iterator<char>(in), {});
    }
    fuzz::emptyDirectory(dir);
    return outputs;
}

bool linesFit(const std::string& text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string::npos || end - start > 254) return false;
        start = end + 1;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fs::path before = fuzz::processTempDir("format-before");
    static const fs::path after = fuzz::processTempDir("format-after");
    const std::string definition = fuzz::bytesOf(data, size);
    std::string formatted;
    std::vector<format::Problem> problems;
    if (!format::formatDefinition(definition, formatted, problems)) {
        if (problems.empty() || !formatted.empty()) std::abort();
        return 0;
    }
    if (!problems.empty() || !linesFit(formatted)) std::abort();
    const auto original = sourcesOf(definition, before);
    if (original.at("<status>") != "0" || sourcesOf(formatted, after) != original) std::abort();
    std::string again;
    if (!format::formatDefinition(formatted, again, problems) || again != formatted) std::abort();
    return 0;
}
