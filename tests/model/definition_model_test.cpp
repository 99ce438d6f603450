#include <gtest/gtest.h>

#include "model/definition_set.h"

using namespace quillet;

namespace {

TEST(DefinitionModel, DocumentationOrderIsByteWiseAndStable) {
    DefinitionSet definitions;
    auto add = [&](const char* name) {
        KeywordDef* keyword = definitions.newKeyword();
        keyword->name = definitions.keep(name);
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
        option->name = definitions.keep(name);
        b->options.push_back(option);
    }
    definitions.sortForDocumentation();
    std::vector<std::string_view> names;
    for (const KeywordDef* keyword : definitions.keywords) names.push_back(keyword->name);
    EXPECT_EQ(names, (std::vector<std::string_view>{"B", "a", "ab", "b", "b", "\xc3\xa9"}));
    EXPECT_EQ(definitions.keywords[3], b);
    EXPECT_EQ(definitions.keywords[4], aliasOfB);
    ASSERT_EQ(b->options.size(), 3u);
    EXPECT_EQ(b->options[0]->name, "Beta");
    EXPECT_EQ(b->options[1]->name, "alpha");
    EXPECT_EQ(b->options[2]->name, "zeta");
}

TEST(DefinitionModel, TableSearchesStopAtTheFirstMatch) {
    DefinitionSet definitions;
    LookupTableDef& table = *definitions.newLookupTable(definitions.keep("Sizes"));
    EXPECT_EQ(table.minValue, 999999999);  // printed as they stand for a table without entries
    EXPECT_EQ(table.maxValue, -999999999);
    definitions.addLookupEntry(table, definitions.keep("S"), definitions.keep("small"), 1);
    definitions.addLookupEntry(table, definitions.keep("M"), definitions.keep("medium"), 2);
    definitions.addLookupEntry(table, definitions.keep("M2"), definitions.keep("medium"), 2);
    std::int32_t value = 0;
    EXPECT_TRUE(table.findValueByName("medium", value));
    EXPECT_EQ(value, 2);
    EXPECT_FALSE(table.findValueByName("M", value));
    EXPECT_TRUE(definitions.findEntryValueById("M2", value));
    EXPECT_EQ(value, 2);
    EXPECT_FALSE(definitions.findEntryValueById("medium", value));
    Text name;
    EXPECT_TRUE(table.findNameByValue(2, name));
    EXPECT_EQ(name, "medium");
    EXPECT_FALSE(table.findNameByValue(3, name));
    EXPECT_EQ(definitions.findLookupTable("Sizes"), &table);
}

TEST(DefinitionModel, TextsKeepEveryByte) {
    DefinitionSet definitions;
    const std::string large(70000, 'x');  // longer than 16 bits, larger than a first block
    for (std::string_view text : {std::string_view(""), std::string_view("a\0b", 3), std::string_view(large)}) {
        const Text kept = definitions.keep(text);
        EXPECT_EQ(kept.view(), text);
        EXPECT_EQ(kept.data()[kept.size()], '\0');
    }
}

}  // namespace
