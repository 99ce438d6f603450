// Runs quillet-diff in-process in every case directory below tests/diff/cases
// and compares what it printed and its exit status with the expected ones,
// byte for byte. A case directory holds:
//   old.def, new.def    the two definitions (old.cmd, new.cmd: aliases files)
//   args                optional, one argument a line; default: old.def new.def
//   expected.out        optional, default empty: standard output
//   expected.err        optional, default empty: standard error
//   expected.status     optional, default 0
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "diff/diff_command.h"
#include "diff/rule.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> findCases() {
    std::vector<fs::path> cases;
    for (const auto& entry : fs::directory_iterator(DIFF_CASES_DIR))
        if (entry.is_directory()) cases.push_back(entry.path());
    std::sort(cases.begin(), cases.end());
    return cases;
}

std::string readOr(const fs::path& path, const std::string& fallback) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return fallback;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// The file names in the expected output are the arguments as given, so
// each case runs in its own directory.
class InDirectory {
public:
    explicit InDirectory(const fs::path& dir) : previous_(fs::current_path()) { fs::current_path(dir); }
    ~InDirectory() { fs::current_path(previous_); }

private:
    fs::path previous_;
};

class DiffCase : public ::testing::TestWithParam<fs::path> {};

TEST_P(DiffCase, MatchesExpectedOutput) {
    const fs::path& dir = GetParam();
    std::vector<std::string> arguments;
    std::istringstream lines(readOr(dir / "args", "old.def\nnew.def\n"));
    for (std::string line; std::getline(lines, line);) arguments.push_back(line);

    std::ostringstream out;
    std::ostringstream err;
    int status = 0;
    {
        InDirectory inCase(dir);
        status = quillet::diff::runQuilletDiff(arguments, out, err, {});
    }
    EXPECT_EQ(status, std::stoi(readOr(dir / "expected.status", "0")));
    EXPECT_EQ(out.str(), readOr(dir / "expected.out", ""));
    EXPECT_EQ(err.str(), readOr(dir / "expected.err", ""));
}

std::string caseName(const ::testing::TestParamInfo<fs::path>& info) { return info.param.filename().string(); }

INSTANTIATE_TEST_SUITE_P(Cases, DiffCase, ::testing::ValuesIn(findCases()), caseName);

// Each rule has its own case directory and is documented for users.
TEST(DiffRules, HaveACaseAndDocumentation) {
    const std::string manPage = readOr(fs::path(DOCS_DIR) / "quillet-diff.1", "");
    const std::string guide = readOr(fs::path(DOCS_DIR) / "definition-language.md", "");
    for (const quillet::diff::RuleInfo& rule : quillet::diff::kRules) {
        std::string caseDir(rule.name);
        std::transform(caseDir.begin(), caseDir.end(), caseDir.begin(), [](unsigned char c) { return std::tolower(c); });
        EXPECT_TRUE(fs::exists(fs::path(DIFF_CASES_DIR) / caseDir)) << rule.name;
        EXPECT_NE(manPage.find(".B " + std::string(rule.name) + '\n'), std::string::npos) << rule.name;
        EXPECT_NE(guide.find('`' + std::string(rule.name) + '`'), std::string::npos) << rule.name;
    }
}

}  // namespace
