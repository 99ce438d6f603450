// Runs every case directory below tests/format/cases/<rule>/ as a real
// quillet-format process in a copy of the directory, and compares what it
// printed and its exit status with the expected ones, byte for byte.
//
// A case directory holds:
//   input.def          the definition, also given on standard input
//   args               optional, one argument per line; default: input.def
//   expected.def       the formatted definition: standard output of a
//                      successful run, and itself already formatted
//   expected.stdout    otherwise, standard output (default empty)
//   expected.stderr    optional, default empty
//   expected.status    optional, default 0
//   expected.inplace   optional, what input.def holds after the run
// and any further files the arguments name.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "format/formatter.h"
#include "support/tool_process.h"

namespace fs = std::filesystem;
using namespace quillet::testing;

namespace {

std::vector<fs::path> findCases() {
    std::vector<fs::path> cases;
    for (const auto& rule : fs::directory_iterator(FORMAT_CASES_DIR))
        for (const auto& entry : fs::directory_iterator(rule.path()))
            if (fs::exists(entry.path() / "input.def")) cases.push_back(entry.path());
    std::sort(cases.begin(), cases.end());
    return cases;
}

std::string optionalFile(const fs::path& path, const std::string& fallback) {
    return fs::exists(path) ? readFile(path) : fallback;
}

class FormatCase : public ::testing::TestWithParam<fs::path> {};

TEST_P(FormatCase, MatchesExpectedOutput) {
    const fs::path& dir = GetParam();
    ScratchDir scratch;
    fs::copy(dir, scratch.path(), fs::copy_options::recursive);

    ProcessRequest request;
    request.workDir = scratch.path();
    request.input = readFile(dir / "input.def");
    request.environment["NO_COLOR"] = std::nullopt;
    std::istringstream lines(optionalFile(dir / "args", "input.def\n"));
    for (std::string line; std::getline(lines, line);) request.arguments.push_back(line);
    const ProcessResult result = runProcess(QUILLET_FORMAT_BINARY, request);

    const bool formats = fs::exists(dir / "expected.def");
    EXPECT_EQ(result.status, std::stoi(optionalFile(dir / "expected.status", "0")));
    EXPECT_EQ(result.out, formats ? readFile(dir / "expected.def") : optionalFile(dir / "expected.stdout", ""));
    EXPECT_EQ(result.err, optionalFile(dir / "expected.stderr", ""));
    if (fs::exists(dir / "expected.inplace")) {
        EXPECT_EQ(readFile(scratch.path() / "input.def"), readFile(dir / "expected.inplace"));
    }
    if (formats) {
        const std::string expected = readFile(dir / "expected.def");
        std::string again;
        std::vector<quillet::format::Problem> problems;
        ASSERT_TRUE(quillet::format::formatDefinition(expected, again, problems));
        EXPECT_EQ(again, expected) << "expected.def is not in the layout";
    }
}

std::string caseName(const ::testing::TestParamInfo<fs::path>& info) {
    std::string name = info.param.parent_path().filename().string() + "_" + info.param.filename().string();
    std::replace_if(name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Format, FormatCase, ::testing::ValuesIn(findCases()), caseName);

}  // namespace
