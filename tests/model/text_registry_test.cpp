#include <gtest/gtest.h>

#include <string>

#include "model/text_registry.h"

using quillet::TextRegistry;

namespace {

TEST(TextRegistry, RefusesWhatItHoldsThroughGrowth) {
    TextRegistry registry;
    for (int i = 0; i < 5000; ++i) ASSERT_TRUE(registry.insert("ID_" + std::to_string(i)));
    EXPECT_EQ(registry.size(), 5000u);
    for (int i = 0; i < 5000; ++i) ASSERT_FALSE(registry.insert("ID_" + std::to_string(i)));
    EXPECT_TRUE(registry.contains("ID_4999"));
    EXPECT_FALSE(registry.contains("ID_5000"));
    EXPECT_FALSE(registry.contains("id_1"));  // exact, case-sensitive
    EXPECT_FALSE(registry.contains("ID_1 "));
}

TEST(TextRegistry, EmptyLongAndBinaryTexts) {
    TextRegistry registry;
    EXPECT_FALSE(registry.contains(""));
    EXPECT_TRUE(registry.insert(""));
    EXPECT_FALSE(registry.insert(""));
    const std::string huge(200000, 'x');  // larger than a storage block
    EXPECT_TRUE(registry.insert(huge));
    EXPECT_FALSE(registry.insert(huge));
    EXPECT_TRUE(registry.insert(huge.substr(1)));
    EXPECT_TRUE(registry.insert(std::string_view("a\0b", 3)));
    EXPECT_FALSE(registry.contains("a"));
}

TEST(TextRegistry, ClearForgetsEverythingAndStaysUsable) {
    TextRegistry registry;
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 100; ++i) ASSERT_TRUE(registry.insert("color" + std::to_string(i))) << round;
        ASSERT_FALSE(registry.insert("color7"));
        registry.clear();
        EXPECT_EQ(registry.size(), 0u);
        EXPECT_FALSE(registry.contains("color7"));
    }
}

}  // namespace
