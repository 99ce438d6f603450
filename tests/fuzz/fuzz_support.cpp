#include "fuzz_support.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

#include "nqerr.h"

namespace fs = std::filesystem;

namespace quillet::fuzz {

namespace {

std::vector<fs::path>& tempDirs() {
    static std::vector<fs::path> dirs;
    return dirs;
}

void removeTempDirs() {
    std::error_code ignored;
    for (const fs::path& dir : tempDirs()) fs::remove_all(dir, ignored);
}

std::FILE* devNull() {
    static std::FILE* sink = std::fopen("/dev/null", "w");
    if (sink == nullptr) std::abort();
    return sink;
}

}  // namespace

fs::path processTempDir(const char* purpose) {
    std::string pattern = (fs::temp_directory_path() / (std::string("quillet-fuzz-") + purpose + "-XXXXXX")).string();
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    if (tempDirs().empty()) std::atexit(removeTempDirs);
    tempDirs().push_back(pattern);
    return pattern;
}

RunContext quietContext() {
    RunContext context;
    context.report.out = devNull();
    context.report.err = devNull();
    context.outputDir = processTempDir("out");
    return context;
}

void emptyDirectory(const fs::path& dir) {
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(dir, ignored)) fs::remove_all(entry.path(), ignored);
}

fs::path writeAliasTree(const fs::path& root, const std::string& aliasFile) {
    const fs::path file = root / "orrery-src/data/res/alias.cmd";
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary | std::ios::trunc) << aliasFile;
    return root;
}

int quietErrorHandler(const RunContext& context) {
    int handle = -1;
    if (nqerr_initialize() != 1 || nqerr_new(&handle) != 1 || nqerr_level(handle, NQERR_DEBUG) != 1 ||
        nqerr_file(handle, context.report.err) != 1)
        std::abort();
    return handle;
}

}  // namespace quillet::fuzz
