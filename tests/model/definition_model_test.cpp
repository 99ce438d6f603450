#include <gtest/gtest.h>

#include "model/definition_set.h"

using namespace quillet;

namespace {

TEST(DefinitionModel, EveryConstructionDrawsTheNextSerial) {
    DefinitionSet definitions;
    KeywordDef* first = definitions.newKeyword();
    OptionDef* a = definitions.newOption();
    OptionDef* b = definitions.newOption();
    KeywordDef* second = definitions.newKeyword();
    OptionDef* c = definitions.newOption();
    EXPECT_EQ(first->serial, 1);
    EXPECT_EQ(second->serial, 2);
    EXPECT_EQ(a->serial, 1);
    EXPECT_EQ(b->serial, 2);
    EXPECT_EQ(c->serial, 3);
    // A second definition set numbers from 1 again.
    DefinitionSet other;
    EXPECT_EQ(other.newKeyword()->serial, 1);
}

TEST(DefinitionModel, InitialValues) {
    DefinitionSet definitions;
    const KeywordDef& keyword = *definitions.newKeyword();
    EXPECT_TRUE(keyword.noBlankOperands);
    EXPECT_EQ(keyword.numTokensInModelName, "1");
    EXPECT_FALSE(keyword.isAlias);
    const LookupTableDef& table = *definitions.newLookupTable("Empty");
    EXPECT_EQ(table.minValue, 999999999);
    EXPECT_EQ(table.maxValue, -999999999);
}

TEST(DefinitionModel, OnlyTheKeywordDescriptionSkipsEmptyWords) {
    DefinitionSet definitions;
    KeywordDef& keyword = *definitions.newKeyword();
    OptionDef& option = *definitions.newOption();
    for (const char* word : {"Sets", "", "the", "size"}) {
        keyword.appendDescription(word);
        keyword.appendSummary(word);
        keyword.appendOperandDescription(word);
        keyword.appendOperandSynopsis(word);
        option.appendDescription(word);
    }
    EXPECT_EQ(keyword.description, "Sets the size ");
    EXPECT_EQ(keyword.summary, "Sets  the size ");
    EXPECT_EQ(keyword.operandDescription, "Sets  the size ");
    EXPECT_EQ(keyword.operandSynopsis, "Sets  the size ");
    EXPECT_EQ(option.description, "Sets  the size ");
}

TEST(DefinitionModel, DocumentationOrderIsByteWiseAndStable) {
    DefinitionSet definitions;
    auto add = [&](const char* name) {
        KeywordDef* keyword = definitions.newKeyword();
        keyword->name = name;
        definitions.keywords.push_back(keyword);
        return keyword;
    };
    KeywordDef* b = add("b");
    add("B");
    add("a");
    KeywordDef* aliasOfB = add("b");
    add("\xc3\xa9");  // bytes above 0x7f sort after ASCII
    add("ab");
    for (const char* name : {"zeta", "alpha", "Beta"}) {
        OptionDef* option = definitions.newOption();
        option->name = name;
        b->addOption(option);
    }
    definitions.sortForDocumentation();
    std::vector<std::string> names;
    for (const KeywordDef* keyword : definitions.keywords) names.push_back(keyword->name);
    EXPECT_EQ(names, (std::vector<std::string>{"B", "a", "ab", "b", "b", "\xc3\xa9"}));
    EXPECT_EQ(definitions.keywords[3], b);
    EXPECT_EQ(definitions.keywords[4], aliasOfB);
    ASSERT_EQ(b->options.size(), 3u);
    EXPECT_EQ(b->options[0]->name, "Beta");
    EXPECT_EQ(b->options[1]->name, "alpha");
    EXPECT_EQ(b->options[2]->name, "zeta");
}

TEST(DefinitionModel, TableSearchesStopAtTheFirstMatch) {
    DefinitionSet definitions;
    LookupTableDef& table = *definitions.newLookupTable("Sizes");
    definitions.addLookupEntry(table, "S", "small", 1);
    definitions.addLookupEntry(table, "M", "medium", 2);
    definitions.addLookupEntry(table, "M2", "medium", 2);
    std::int32_t value = 0;
    EXPECT_TRUE(table.findValueByName("medium", value));
    EXPECT_EQ(value, 2);
    EXPECT_FALSE(table.findValueByName("M", value));
    EXPECT_TRUE(definitions.findEntryValueById("M2", value));
    EXPECT_EQ(value, 2);
    EXPECT_FALSE(definitions.findEntryValueById("medium", value));
    std::string name;
    EXPECT_TRUE(table.findNameByValue(2, name));
    EXPECT_EQ(name, "medium");
    EXPECT_FALSE(table.findNameByValue(3, name));
    EXPECT_EQ(definitions.findLookupTable("Sizes"), nullptr);  // not registered by creation alone
}

}  // namespace
