// Runs quillet-preview on every case directory below tests/golden/preview and
// compares its output, exit status and the site it left with the expected
// ones, byte for byte.
//
// A case directory holds:
//   before/            optional, the working directory to start from:
//                      reference/ and, for a case that replaces or keeps one,
//                      site/
//   args               optional, one argument per line; default "reference"
//                      and "site"
//   expected.stdout    optional, default empty
//   expected.stderr    optional, default empty
//   expected.status    optional, default 0
//   expected/          the exact files of site/ afterwards, each under its
//                      name plus ".golden"; absent: site/ must be as before/
//                      had it (or still absent)
// In every case the reference is left as it was and nothing else appears
// beside the site (no staging directory left behind).
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "support/tool_process.h"

namespace fs = std::filesystem;
using namespace quillet::testing;

namespace {

constexpr std::string_view kGoldenSuffix = ".golden";

// Path below `root` (suffix dropped) to content.
std::map<std::string, std::string> filesBelow(const fs::path& root, std::string_view dropSuffix = {}) {
    std::map<std::string, std::string> files;
    if (!fs::exists(root)) return files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file()) continue;
        std::string name = fs::relative(entry.path(), root).string();
        if (!dropSuffix.empty() && name.ends_with(dropSuffix)) name.resize(name.size() - dropSuffix.size());
        files[name] = readFile(entry.path());
    }
    return files;
}

std::vector<std::string> entriesOf(const fs::path& dir) {
    std::vector<std::string> names;
    if (!fs::exists(dir)) return names;
    for (const auto& entry : fs::directory_iterator(dir)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string optionalFile(const fs::path& path, const std::string& fallback) {
    return fs::exists(path) ? readFile(path) : fallback;
}

class PreviewGolden : public ::testing::TestWithParam<fs::path> {};

TEST_P(PreviewGolden, MatchesExpectedSite) {
    const fs::path& dir = GetParam();
    ScratchDir scratch;
    const fs::path work = scratch.path() / "work";
    fs::create_directories(work);
    if (fs::exists(dir / "before")) fs::copy(dir / "before", work, fs::copy_options::recursive);

    ProcessRequest request;
    request.workDir = work;
    request.arguments = {"reference", "site"};
    request.environment["NO_COLOR"] = std::nullopt;
    if (fs::exists(dir / "args")) {
        request.arguments.clear();
        std::istringstream lines(readFile(dir / "args"));
        for (std::string line; std::getline(lines, line);) request.arguments.push_back(line);
    }
    const ProcessResult result = runProcess(PREVIEW_BINARY, request);

    EXPECT_EQ(result.status, std::stoi(optionalFile(dir / "expected.status", "0")));
    EXPECT_EQ(result.out, optionalFile(dir / "expected.stdout", ""));
    EXPECT_EQ(result.err, optionalFile(dir / "expected.stderr", ""));
    const bool written = fs::exists(dir / "expected");
    EXPECT_EQ(filesBelow(work / "site"),
              written ? filesBelow(dir / "expected", kGoldenSuffix) : filesBelow(dir / "before/site"));
    EXPECT_EQ(filesBelow(work / "reference"), filesBelow(dir / "before/reference"));
    std::vector<std::string> expectedEntries = entriesOf(dir / "before");
    if (written && !fs::exists(dir / "before/site")) expectedEntries.insert(expectedEntries.end(), "site");
    std::sort(expectedEntries.begin(), expectedEntries.end());
    EXPECT_EQ(entriesOf(work), expectedEntries);
}

std::vector<fs::path> findCases() {
    std::vector<fs::path> cases;
    for (const auto& entry : fs::directory_iterator(CASES_DIR)) cases.push_back(entry.path());
    std::sort(cases.begin(), cases.end());
    return cases;
}

std::string caseName(const ::testing::TestParamInfo<fs::path>& info) {
    std::string name = info.param.filename().string();
    std::replace_if(name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Golden, PreviewGolden, ::testing::ValuesIn(findCases()), caseName);

}  // namespace
