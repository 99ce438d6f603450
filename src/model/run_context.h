#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace quillet {

// Where one run reports and writes. The driver fills it from the process;
// tests, benchmarks and fuzzers point it elsewhere.
struct RunContext {
    int errorHandler = -1;  // errors (level 5) and the limit look-up report (level 2)
    int debugHandler = -1;  // progress messages, silent with the driver's settings
    std::FILE* out = stdout;  // the one alias diagnostic that goes to standard output
    std::FILE* err = stderr;  // range messages written without the error handler
    std::filesystem::path outputDir = ".";
    std::optional<std::string> vellumSrc;  // root of the application's sources, if set

    std::filesystem::path outputPath(const std::string& fileName) const { return outputDir / fileName; }
};

}  // namespace quillet
