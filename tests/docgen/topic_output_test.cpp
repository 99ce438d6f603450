// Properties of the written reference as a whole, beyond byte comparison:
// the table of contents links only to topics that exist, and every topic is
// well-formed XML for the documentation project to load.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "support/tool_process.h"

namespace fs = std::filesystem;
using namespace quillet::testing;

namespace {

TEST(CommandIndex, EveryGoldenLinkNamesATopicOfTheSameRun) {
    int indexes = 0;
    const std::string_view prefix = "Link=\"/Content/orrery_command_reference/";
    const std::string_view suffix = "\" />\r\n";
    for (const auto& entry : fs::directory_iterator(fs::path(GOLDEN_DIR) / "docgen")) {
        const fs::path expected = entry.path() / "expected";
        if (!fs::exists(expected / "Commands.fltoc.golden") || fs::exists(entry.path() / "expected.status")) continue;
        ++indexes;
        const std::string index = readFile(expected / "Commands.fltoc.golden");
        for (std::size_t at = index.find(prefix); at != std::string::npos; at = index.find(prefix, at)) {
            at += prefix.size();
            const std::string topic = index.substr(at, index.find(suffix, at) - at);
            EXPECT_TRUE(fs::is_regular_file(expected / (topic + ".golden"))) << entry.path() << ": " << topic;
        }
    }
    EXPECT_GT(indexes, 0);
}

const char* const kDefinition = R"(
LOOKUP: Modes M_FAST fast 1 M_SAFE safe 2 M_SLOW slow 3
KEYWORD: plot PLOT_KWD
KEY_DESCRIPTION: Plots & draws a < b > c, ''quoted`` and \\\\ broken.
KEY_OPERAND_SYNOPSIS: file <name>
KEY_OPERAND_DESCRIPTION: The & file.
OPTION: mode PLOT_MODE NQ_INT_TYPE safe
OPT_LOOKUP: Modes
OPTION: scale PLOT_SCALE NQ_DOUBLE_TYPE 0.5
OPT_MINIMUM: 0 OPT_MAXIMUM: 1e3
OPTION: title PLOT_TITLE NQ_STRING_TYPE "a < b & ''c''"
OPT_DESCRIPTION: Title <text> & more.
OPTION: grid PLOT_GRID NQ_BOOL_TYPE on
OPTION: count PLOT_COUNT NQ_INT_TYPE 3
OPTION: secret PLOT_SECRET NQ_INT_TYPE 1
OPT_READONLY:
KEYWORD: quit QUIT_KWD
)";

TEST(Topics, AreWellFormedXmlWhenNamesHoldNoMarkUp) {
    if (std::system("command -v xmllint >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "xmllint (libxml2-utils) is not installed; topics not checked";
    ScratchDir scratch;
    const fs::path work = scratch.path() / "work";
    fs::create_directories(work);
    writeFile(scratch.path() / "src/orrery-src/data/res/alias.cmd", "x p plot\nx q quit\nx pl plot\n");

    ProcessRequest request;
    request.arguments = {"-html"};
    request.input = kDefinition;
    request.workDir = work;
    request.environment["VELLUM_SRC"] = (scratch.path() / "src").string();
    ASSERT_EQ(runQuilletProcess(request).status, 0);

    int topics = 0;
    for (const auto& entry : fs::directory_iterator(work)) {
        if (entry.path().extension() != ".html") continue;
        ++topics;
        const std::string command = "xmllint --noout '" + entry.path().string() + "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << entry.path();
    }
    EXPECT_EQ(topics, 5);
}

}  // namespace
