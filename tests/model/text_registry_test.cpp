#include <gtest/gtest.h>

#include <string>

#include "model/definition_set.h"
#include "model/text_registry.h"

using namespace quillet;

namespace {

TEST(TextRegistry, RefusesWhatItHoldsThroughGrowthAndClearing) {
    DefinitionSet texts;
    TextRegistry registry;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 5000; ++i) ASSERT_TRUE(registry.insert(texts.keep("ID_" + std::to_string(i))));
        EXPECT_EQ(registry.size(), 5000u);
        for (int i = 0; i < 5000; ++i) ASSERT_FALSE(registry.insert(texts.keep("ID_" + std::to_string(i))));
        EXPECT_TRUE(registry.contains("ID_4999"));
        EXPECT_FALSE(registry.contains("ID_5000"));
        EXPECT_FALSE(registry.contains("id_1"));  // exact, case-sensitive
        EXPECT_FALSE(registry.contains("ID_1 "));
        registry.clear();
        EXPECT_FALSE(registry.contains("ID_7"));
        registry.reserve(100000);
    }
}

TEST(TextRegistry, EmptyLongAndBinaryTexts) {
    DefinitionSet texts;
    TextRegistry registry;
    EXPECT_FALSE(registry.contains(""));
    EXPECT_TRUE(registry.insert(texts.keep("")));
    EXPECT_FALSE(registry.insert(texts.keep("")));
    const std::string huge(200000, 'x');
    EXPECT_TRUE(registry.insert(texts.keep(huge)));
    EXPECT_FALSE(registry.insert(texts.keep(huge)));
    EXPECT_TRUE(registry.insert(texts.keep(huge.substr(1))));
    EXPECT_TRUE(registry.insert(texts.keep(std::string_view("a\0b", 3))));
    EXPECT_FALSE(registry.contains("a"));
}

}  // namespace
