#include <gtest/gtest.h>

#include <map>
#include <random>
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

// The copy for a file whose part was read again: what the part no longer
// takes is gone (through long probe runs, a full table and its wraparound),
// what it takes is at its new place, and the rest moves past the part.
TEST(TextRegistry, CopyForAPartReadAgain) {
    DefinitionSet texts;
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        const int count = 1 + static_cast<int>(random() % 300);
        TextRegistry file;
        TextRegistry was;
        TextRegistry now;
        file.keepPlaces();
        was.keepPlaces();
        now.keepPlaces();
        std::map<std::string, Position> expected;
        for (int i = 0; i < count; ++i) {
            const std::string name = "N" + std::to_string(random() % 1000);
            const int line = 1 + static_cast<int>(random() % 30);  // the part: lines 10 to 19
            if (!file.insert(texts.keep(name), {line, 1})) continue;
            if (line >= 10 && line < 20) {
                was.insert(texts.keep(name), {line, 1});
                if (random() % 2 != 0) continue;  // no longer taken
                now.insert(texts.keep(name), {line, 2});
                expected[name] = {line, 2};
            } else {
                expected[name] = {line >= 20 ? line + 3 : line, 1};
            }
        }
        for (int i = 0; i < 20; ++i) {
            const std::string name = "M" + std::to_string(i);
            if (random() % 2 == 0 && now.insert(texts.keep(name), {12, 5})) expected[name] = {12, 5};
        }
        const TextRegistry copy(file, 19, 3, was, now);
        ASSERT_EQ(copy.size(), expected.size()) << seed;
        for (const auto& [name, place] : expected) {
            const std::optional<Position> found = copy.placeOf(name);
            ASSERT_TRUE(found) << name << " " << seed;
            EXPECT_EQ(found->line, place.line) << name;
            EXPECT_EQ(found->column, place.column) << name;
        }
        for (int i = 0; i < 1000; ++i) {
            const std::string name = "N" + std::to_string(i);
            EXPECT_EQ(copy.contains(name), expected.contains(name)) << name << " " << seed;
        }
    }
}

}  // namespace
