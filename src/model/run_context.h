#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "model/reporter.h"

namespace quillet {

// Where one run reports and writes. The driver fills it from the process;
// tests, benchmarks and fuzzers point it elsewhere.
struct RunContext {
    Reporter report;
    std::filesystem::path outputDir = ".";
    std::optional<std::string> vellumSrc;  // root of the application's sources, if set

    std::filesystem::path outputPath(std::string_view fileName) const { return outputDir / fileName; }
};

}  // namespace quillet
