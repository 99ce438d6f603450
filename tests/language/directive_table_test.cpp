// The directive table is the one description of the language: these tests
// fail when a row leaves out what a tool needs of it, or when the guide's
// table of directives says otherwise.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "codegen/init_source_writer.h"
#include "language/directive.h"
#include "support/tool_process.h"

using namespace quillet;

namespace {

// The guide's "Applies to" column, as the row's context rules put it.
std::string appliesTo(const DirectiveSpec& row) {
    switch (row.arguments) {
    case Arguments::Keyword: return "starts a command";
    case Arguments::Option: return "starts an option";
    case Arguments::Lookup: return "starts a table";
    default: break;
    }
    if (row.needs == Needs::KeywordAndOption) return "option";
    return row.secondUseRefusal != nullptr ? "command (one per file)" : "command";
}

// The generated initialisation source of one keyword with one boolean
// option, with the row's flag in effect or not.
std::string initSource(const DirectiveSpec* row) {
    DefinitionSet definitions;
    KeywordDef* keyword = definitions.newKeyword();
    OptionDef* option = definitions.newOption();
    option->type = OptionType::NQ_BOOL_TYPE;
    keyword->options.push_back(option);
    definitions.keywords.push_back(keyword);
    if (row != nullptr && row->keywordFlag != nullptr) keyword->*row->keywordFlag = row->flagValue;
    if (row != nullptr && row->optionFlag != nullptr) option->*row->optionFlag = row->flagValue;
    const quillet::testing::ScratchDir dir;
    RunContext context;
    context.outputDir = dir.path();
    {
        OutputFile out;
        EXPECT_TRUE(openOutputFile(out, context, kInitSourceFile));
        EXPECT_TRUE(writeInitSource(definitions, context, out));
    }
    return quillet::testing::readFile(dir.path() / kInitSourceFile);
}

}  // namespace

TEST(DirectiveTable, EveryRowIsComplete) {
    std::set<std::string_view> words;
    std::set<Directive> numbers;
    for (const DirectiveSpec& row : kDirectives) {
        SCOPED_TRACE(row.word);
        EXPECT_TRUE(words.insert(row.word).second);
        EXPECT_TRUE(numbers.insert(row.directive).second);
        EXPECT_TRUE(row.word.ends_with(':'));
        EXPECT_EQ(&directiveRow(row.directive), &row);
        EXPECT_EQ(findDirective(row.word), &row);
        EXPECT_FALSE(row.synopsis.empty());
        EXPECT_FALSE(row.description.empty());
        EXPECT_EQ(row.refusal == nullptr, row.needs == Needs::Nothing);
        if (!row.isFlag()) continue;
        // What every flag needs: a diff rule each way, and a source line
        // unless it says why it has none.
        EXPECT_FALSE(row.given.name.empty());
        EXPECT_FALSE(row.dropped.name.empty());
        const bool hasLine = row.output == FlagOutput::SourceLine || row.output == FlagOutput::ModelNameLines;
        EXPECT_EQ(row.sourceLine.empty(), !hasLine);
    }
    EXPECT_EQ(words.size(), kDirectiveCount);
}

// Each flag's line reaches the generated source exactly when the flag is in
// effect, once, and no other flag's line comes with it.
TEST(DirectiveTable, FlagLinesReachTheGeneratedSource) {
    const std::string plain = initSource(nullptr);
    for (const DirectiveSpec& row : kDirectives) {
        if (row.sourceLine.empty()) continue;
        SCOPED_TRACE(row.word);
        EXPECT_EQ(plain.find(row.sourceLine), std::string::npos);
        const std::string flagged = initSource(&row);
        const std::size_t at = flagged.find(row.sourceLine);
        ASSERT_NE(at, std::string::npos);
        std::string rest = flagged;
        rest.erase(at, row.sourceLine.size());
        if (row.output == FlagOutput::ModelNameLines) {
            const std::string count = "\tcurrent_keyword->setNumberTokensInModelName(1);\n";
            ASSERT_EQ(rest.substr(at, count.size()), count);
            rest.erase(at, count.size());
        }
        EXPECT_EQ(rest, plain);
    }
}

// The guide's table of all directives lists each row's word, synopsis,
// context and description.
TEST(DirectiveTable, GuideListsEveryRow) {
    std::ifstream guide(DOCS_DIR "/definition-language.md");
    ASSERT_TRUE(guide);
    std::string line;
    while (std::getline(guide, line) && line != "### All directives") {}
    std::map<std::string, std::vector<std::string>, std::less<>> listed;
    bool inTable = false;
    while (std::getline(guide, line)) {
        if (!line.starts_with('|')) {
            if (inTable) break;
            continue;
        }
        inTable = true;
        std::vector<std::string> cells;
        std::stringstream cellsOf(line.substr(1));
        for (std::string cell; std::getline(cellsOf, cell, '|');)
            cells.push_back(cell.substr(1, cell.size() - 2));
        if (cells.size() == 4 && cells[0].starts_with('`'))
            listed[cells[0].substr(1, cells[0].size() - 2)] = {cells[1], cells[2], cells[3]};
    }
    for (const DirectiveSpec& row : kDirectives) {
        SCOPED_TRACE(row.word);
        const auto found = listed.find(row.word);
        ASSERT_NE(found, listed.end());
        EXPECT_EQ(found->second[0], row.synopsis);
        EXPECT_EQ(found->second[1], appliesTo(row));
        EXPECT_EQ(found->second[2], row.description);
    }
    EXPECT_EQ(listed.size(), kDirectiveCount);
}
