// Runs every case directory below tests/golden as a real quillet process and
// compares what it printed, its exit status and every file it left behind
// with the expected ones, byte for byte.
//
// A case directory holds:
//   input.def          standard input
//   args               optional, one argument per line
//   alias.cmd          optional, placed at <root>/orrery-src/data/res/alias.cmd
//                      with VELLUM_SRC set to <root>
//   vellum_src         optional, VELLUM_SRC set to this text (one trailing
//                      line end dropped); otherwise VELLUM_SRC is unset
//   before/            optional, copied into the working directory first
//   expected.stdout    optional, default empty
//   expected.stderr    optional, default empty
//   expected.status    optional, default 0
//   expected/          the exact set of files the working directory must hold
//                      afterwards (absent: no file at all), each stored under
//                      its name plus ".golden" so that expected sources are
//                      not taken for the project's own
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string_view>

#include "support/tool_process.h"

namespace fs = std::filesystem;
using namespace quillet::testing;

namespace {

std::vector<fs::path> findCases() {
    std::vector<fs::path> cases;
    for (const auto& area : fs::directory_iterator(GOLDEN_DIR)) {
        if (!area.is_directory()) continue;
        for (const auto& entry : fs::directory_iterator(area.path()))
            if (fs::exists(entry.path() / "input.def")) cases.push_back(entry.path());
    }
    std::sort(cases.begin(), cases.end());
    return cases;
}

std::string optionalFile(const fs::path& path, const std::string& fallback) {
    return fs::exists(path) ? readFile(path) : fallback;
}

std::string dropLineEnd(std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

constexpr std::string_view kGoldenSuffix = ".golden";

std::set<std::string> filesBelow(const fs::path& root, std::string_view dropSuffix = {}) {
    std::set<std::string> files;
    if (!fs::exists(root)) return files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file()) continue;
        std::string name = fs::relative(entry.path(), root).string();
        if (!dropSuffix.empty() && name.ends_with(dropSuffix)) name.resize(name.size() - dropSuffix.size());
        files.insert(name);
    }
    return files;
}

class GoldenCase : public ::testing::TestWithParam<fs::path> {};

TEST_P(GoldenCase, MatchesExpectedOutput) {
    const fs::path& dir = GetParam();
    ScratchDir scratch;
    const fs::path work = scratch.path() / "work";
    fs::create_directories(work);
    if (fs::exists(dir / "before")) fs::copy(dir / "before", work, fs::copy_options::recursive);

    ProcessRequest request;
    request.workDir = work;
    request.input = readFile(dir / "input.def");
    request.environment["VELLUM_SRC"] = std::nullopt;
    request.environment["VELLUM_DEPRECATION_WARNING"] = std::nullopt;
    if (fs::exists(dir / "args")) {
        std::istringstream lines(readFile(dir / "args"));
        for (std::string line; std::getline(lines, line);) request.arguments.push_back(line);
    }
    if (fs::exists(dir / "alias.cmd")) {
        const fs::path root = scratch.path() / "src";
        writeFile(root / "orrery-src/data/res/alias.cmd", readFile(dir / "alias.cmd"));
        request.environment["VELLUM_SRC"] = root.string();
    }
    if (fs::exists(dir / "vellum_src")) request.environment["VELLUM_SRC"] = dropLineEnd(readFile(dir / "vellum_src"));

    ProcessResult result = runQuilletProcess(request);

    EXPECT_EQ(result.status, std::stoi(optionalFile(dir / "expected.status", "0")));
    EXPECT_EQ(result.out, optionalFile(dir / "expected.stdout", ""));
    EXPECT_EQ(result.err, optionalFile(dir / "expected.stderr", ""));
    const fs::path expected = dir / "expected";
    const std::set<std::string> expectedFiles = filesBelow(expected, kGoldenSuffix);
    EXPECT_EQ(filesBelow(work), expectedFiles);
    for (const std::string& file : expectedFiles) {
        if (!fs::exists(work / file)) continue;
        EXPECT_EQ(readFile(work / file), readFile(expected / (file + std::string(kGoldenSuffix)))) << "file " << file;
    }
}

std::string caseName(const ::testing::TestParamInfo<fs::path>& info) {
    std::string name = info.param.parent_path().filename().string() + "_" + info.param.filename().string();
    std::replace_if(name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Golden, GoldenCase, ::testing::ValuesIn(findCases()), caseName);

}  // namespace
