// The whole tool in-process on arbitrary bytes as the definition file, through
// the source path and the reference path (with no aliases or with a few, by
// the input's size).
// Beyond the sanitizers it checks the run's contract: the status is 0 or 255,
// and a failed source run leaves the existing output files untouched.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz_support.h"
#include "quillet/driver.h"

namespace fs = std::filesystem;
using namespace quillet;

namespace {

constexpr std::array<const char*, 3> kSourceFiles{"nq_command_id.h", "nq_command_id.cxx", "nq_command_init.cxx"};
constexpr const char* kSentinel = "left by an earlier run\n";

struct Setup {
    RunContext context = fuzz::quietContext();
    fs::path commentedAliases = fuzz::writeAliasTree(fuzz::processTempDir("aliases"), "# none yet\n");
    fs::path someAliases = fuzz::writeAliasTree(fuzz::processTempDir("aliases"),
                                                "alias x a\n# q quit\nalias y x\nalias b a\n");
};

Setup& setup() {
    static Setup instance;
    return instance;
}

int run(const std::string& definition, bool html, const fs::path* aliasRoot) {
    RunContext context = setup().context;
    if (aliasRoot != nullptr) context.vellumSrc = aliasRoot->string();
    LineReader input(definition);
    const int status = runQuillet(html ? std::vector<std::string>{"-html"} : std::vector<std::string>{}, input, context);
    if (status != 0 && status != 255) std::abort();
    return status;
}

std::string contentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void checkSourcePath(const std::string& definition) {
    const fs::path& dir = setup().context.outputDir;
    for (const char* file : kSourceFiles) std::ofstream(dir / file, std::ios::binary) << kSentinel;
    const int status = run(definition, false, nullptr);
    // In a writable directory the writers cannot fail, so a failure is a
    // definition error, and those must not touch what is already there.
    for (const char* file : kSourceFiles)
        if ((contentOf(dir / file) == kSentinel) != (status == 255)) std::abort();
    fuzz::emptyDirectory(dir);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string definition = fuzz::bytesOf(data, size);
    checkSourcePath(definition);

    // Topic files are named after keywords; keep them inside the output
    // directory whatever the names hold.
    std::string contained = definition;
    std::replace(contained.begin(), contained.end(), '/', '_');
    // Either aliases file, so that each input costs two runs, not three.
    run(contained, true, size % 2 == 0 ? &setup().commentedAliases : &setup().someAliases);
    fuzz::emptyDirectory(setup().context.outputDir);
    return 0;
}
