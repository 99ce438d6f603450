// Aliases files far larger than any real one must still be read in time
// proportional to their size, and each alias must still find the first record
// of its keyword's name.
#include <gtest/gtest.h>

#include <string>

#include "docgen/alias_reader.h"
#include "support/tool_process.h"

using namespace quillet;
using quillet::testing::ScratchDir;
using quillet::testing::writeFile;

namespace {

KeywordDef& addKeyword(DefinitionSet& definitions, const std::string& name) {
    KeywordDef* keyword = definitions.newKeyword();
    keyword->name = definitions.keep(name);
    definitions.keywords.push_back(keyword);
    return *keyword;
}

TEST(LargeAliasesFile, ChainedAliasesAreResolvedInLinearTime) {
    // Each alias names the alias before it, the record at the far end of the
    // list: a scan per alias would take hours here.
    constexpr int kAliases = 200000;
    DefinitionSet definitions;
    for (int i = 0; i < 1000; ++i) addKeyword(definitions, "k" + std::to_string(i));
    std::string file;
    std::string previous = "k999";
    for (int i = 0; i < kAliases; ++i) {
        std::string alias = "a" + std::to_string(i);
        file += "alias " + alias + " " + previous + "\n";
        previous = alias;
    }
    ScratchDir root;
    writeFile(root.path() / "orrery-src/data/res/alias.cmd", file);
    RunContext context;
    context.vellumSrc = root.path().string();

    ASSERT_TRUE(readAliasFile(definitions, context));

    ASSERT_EQ(definitions.keywords.size(), 1000u + kAliases);
    const KeywordDef& last = *definitions.keywords.back();
    ASSERT_EQ(last.aliases.size(), 1u);
    EXPECT_EQ(last.aliases[0]->name, "a" + std::to_string(kAliases - 2));
}

TEST(LargeAliasesFile, AKeywordWordFindsTheFirstRecordOfItsName) {
    DefinitionSet definitions;
    KeywordDef& keyword = addKeyword(definitions, "draw");
    ScratchDir root;
    writeFile(root.path() / "orrery-src/data/res/alias.cmd", "x dup draw\nx dup draw\nx late dup\n");
    RunContext context;
    context.vellumSrc = root.path().string();

    ASSERT_TRUE(readAliasFile(definitions, context));
    ASSERT_EQ(definitions.keywords.size(), 4u);
    KeywordDef& firstDup = *definitions.keywords[1];
    KeywordDef& secondDup = *definitions.keywords[2];
    EXPECT_EQ(keyword.aliases.size(), 2u);
    ASSERT_EQ(firstDup.aliases.size(), 2u);
    EXPECT_EQ(firstDup.aliases[1], definitions.keywords[3]);
    EXPECT_EQ(secondDup.aliases.size(), 1u);
}

}  // namespace
