// Runs quillet-lint as a real process in each directory below cases/ and
// compares its outputs and exit status with the expected ones, byte for byte.
// A case holds `args` (one argument a line; files are named relative to the
// case directory) and optionally `stdin`, expected.stdout, expected.stderr
// and expected.status (default: empty, empty, empty, 0).
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "support/tool_process.h"

namespace fs = std::filesystem;
using namespace quillet::testing;

namespace {

std::vector<fs::path> findCases() {
    std::vector<fs::path> cases;
    for (const auto& entry : fs::directory_iterator(LINT_CASES_DIR))
        if (fs::exists(entry.path() / "args")) cases.push_back(entry.path());
    std::sort(cases.begin(), cases.end());
    return cases;
}

std::string optionalFile(const fs::path& path) { return fs::exists(path) ? readFile(path) : ""; }

class LintCase : public ::testing::TestWithParam<fs::path> {};

TEST_P(LintCase, MatchesExpectedOutput) {
    const fs::path& dir = GetParam();
    ProcessRequest request;
    request.workDir = dir;
    request.input = optionalFile(dir / "stdin");
    std::istringstream lines(readFile(dir / "args"));
    for (std::string line; std::getline(lines, line);) request.arguments.push_back(line);
    const ProcessResult result = runProcess(QUILLET_LINT_BINARY, request);
    const std::string status = optionalFile(dir / "expected.status");
    EXPECT_EQ(result.status, status.empty() ? 0 : std::stoi(status));
    EXPECT_EQ(result.out, optionalFile(dir / "expected.stdout"));
    EXPECT_EQ(result.err, optionalFile(dir / "expected.stderr"));
}

INSTANTIATE_TEST_SUITE_P(Lint, LintCase, ::testing::ValuesIn(findCases()),
                         [](const ::testing::TestParamInfo<fs::path>& info) { return info.param.filename().string(); });

}  // namespace
