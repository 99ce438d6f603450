// What the golden cases cannot reach through a definition file: files that
// cannot be opened, option types the reader never stores, lookup tables the
// model lacks, and VELLUM_SRC values too long for the path buffer.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "docgen/alias_reader.h"
#include "docgen/command_index_writer.h"
#include "docgen/page_body.h"
#include "docgen/page_writer.h"
#include "support/error_capture.h"
#include "support/tool_process.h"

namespace fs = std::filesystem;
using namespace quillet;
using quillet::testing::ErrorCapture;
using quillet::testing::readFile;
using quillet::testing::ScratchDir;

namespace {

class DocgenFailure : public ::testing::Test {
protected:
    DocgenFailure() { context_.outputDir = scratch_.path(); }

    KeywordDef& addKeyword(const std::string& name) {
        KeywordDef* keyword = definitions_.newKeyword();
        keyword->name = name;
        definitions_.keywords.push_back(keyword);
        return *keyword;
    }
    OptionDef& addOption(KeywordDef& keyword, const char* name, int type) {
        OptionDef* option = definitions_.newOption();
        option->name = name;
        option->type = static_cast<OptionType>(type);
        keyword.addOption(option);
        return *option;
    }

    ScratchDir scratch_;
    ErrorCapture capture_;
    RunContext& context_ = capture_.context();
    DefinitionSet definitions_;
};

TEST_F(DocgenFailure, UnopenableFilesAreReportedByFileNameAndStopTheWriter) {
    for (char letter = 'a'; letter <= 'l'; ++letter) addKeyword(std::string(1, letter));
    fs::create_directory(scratch_.path() / "j.html");
    fs::create_directory(scratch_.path() / "Commands.fltoc");

    EXPECT_FALSE(writeCommandIndex(definitions_, context_));
    EXPECT_FALSE(writeCommandPages(definitions_, context_));

    EXPECT_EQ(capture_.messages(), "FATAL Error opening file: Commands.fltoc\nFATAL Error opening file: j.html\n");
    for (char letter = 'a'; letter <= 'i'; ++letter)
        EXPECT_TRUE(fs::is_regular_file(scratch_.path() / (std::string(1, letter) + ".html"))) << letter;
    EXPECT_FALSE(fs::exists(scratch_.path() / "k.html"));
    EXPECT_FALSE(fs::exists(scratch_.path() / "l.html"));
}

TEST_F(DocgenFailure, UnknownOptionTypeLeavesAPartialTopicAndStops) {
    KeywordDef& draw = addKeyword("draw");
    addOption(draw, "a", 0);
    addOption(draw, "b", 7);
    addOption(addKeyword("later"), "hidden", 9).readOnly = true;
    std::swap(definitions_.keywords[0], definitions_.keywords[1]);  // the read-only one first

    EXPECT_FALSE(writeCommandPages(definitions_, context_));

    EXPECT_EQ(capture_.messages(), "FATAL Unknown type: 7\nFATAL Error writing keyword syntax for draw");
    EXPECT_TRUE(fs::exists(scratch_.path() / "later.html"));
    const std::string topic = readFile(scratch_.path() / "draw.html");
    const std::string tail = "<h1 class=\"title\">draw</h1>\r\n<p></p>\r\n<p>Syntax: <b>draw</b> <i>a</i>= &lt;n&gt; <i>b</i>= ";
    ASSERT_GE(topic.size(), tail.size());
    EXPECT_EQ(topic.substr(topic.size() - tail.size()), tail);

    // The option list stops at the same option, inside its open table cell.
    std::ostringstream details;
    EXPECT_FALSE(writeOptionDetails(details, draw, definitions_, context_));
    EXPECT_TRUE(details.str().ends_with("<dt><i>b</i></dt><br/>\r\n<dd></dd><br/>\r\n"
                                        "<dd><table summary=\"\"><tr align=\"left\"><td valign=\"top\">"
                                        "Valid values:</td><td>\r\n"));
}

TEST_F(DocgenFailure, MissingLookupTableIsReportedAtEachUseAndNeverCreated) {
    KeywordDef& paint = addKeyword("paint");
    OptionDef& colour = addOption(paint, "colour", 0);
    colour.setLookupTable("Colours");
    colour.hasDefault = true;
    colour.defaultValue = 2;
    colour.hasMinimum = true;
    colour.minimumText = "1";

    std::ostringstream topic;
    EXPECT_TRUE(writeSyntax(topic, paint, definitions_, context_));
    EXPECT_TRUE(writeOptionDetails(topic, paint, definitions_, context_));

    EXPECT_EQ(topic.str(),
              "<p>Syntax: <b>paint</b> <i>colour</i>=  "
              "<p>Options:</p>\r\n<dl>\r\n<dt><i>colour</i></dt><br/>\r\n<dd></dd><br/>\r\n"
              "<dd><table summary=\"\"><tr align=\"left\"><td valign=\"top\">Valid values:</td><td>\r\n"
              "<tr align=\"left\"><td valign=\"top\">Default value: </td>\r\n"
              "</table></dd><br/>\r\n</dl>\r\n");
    const std::string report = "FATAL Unknown lookup table name: 'Colours'\n";
    EXPECT_EQ(capture_.messages(), report + report + report);
    EXPECT_TRUE(definitions_.lookupTables.empty());
}

TEST_F(DocgenFailure, OverLongVellumSrcIsCutToTheBuffer) {
    context_.vellumSrc = std::string(993, 'v');  // just fits with the terminator
    EXPECT_FALSE(readAliasFile(definitions_, context_));
    context_.vellumSrc = std::string(994, 'v');
    EXPECT_FALSE(readAliasFile(definitions_, context_));
    context_.vellumSrc = std::string(5000, 'v');
    EXPECT_FALSE(readAliasFile(definitions_, context_));

    const std::string message = "FATAL Error opening command aliases file: ";
    EXPECT_EQ(capture_.messages(), message + std::string(993, 'v') + "/orrery-src/data/res/alias.cmd\n" +
                              message + std::string(994, 'v') + "/orrery-src/data/res/alias.cm\n" +
                              message + std::string(1023, 'v') + "\n");
}

}  // namespace
