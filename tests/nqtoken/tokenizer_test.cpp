#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "nqtoken.h"

namespace {

// The words of `line` as the definition reader splits it, or the single
// word "<untokenizable>" when the tokenizer refuses the line.
std::vector<std::string> words(const char* line, const char* quotes = "\"", const char* comments = "#") {
    nqtoken_list* list = nullptr;
    if (nqtoken_new(&list, line, " \t\n", quotes, comments, 0, 0) != 0) return {"<untokenizable>"};
    std::vector<std::string> result;
    for (int i = 0; i < nqtoken_num(list); ++i) {
        result.emplace_back(nqtoken_get_token(list, i));
        EXPECT_EQ(nqtoken_get_length(list, i), static_cast<int>(result.back().size())) << line;
    }
    nqtoken_delete(list);
    return result;
}

using Words = std::vector<std::string>;

TEST(Tokenizer, SeparatorsAndComments) {
    EXPECT_EQ(words(""), Words{});
    EXPECT_EQ(words("  \t "), Words{});
    EXPECT_EQ(words("  KEYWORD:\t delete  DELETE_KWD "), (Words{"KEYWORD:", "delete", "DELETE_KWD"}));
    EXPECT_EQ(words("# only a comment"), Words{});
    EXPECT_EQ(words("abc#def ghi"), Words{"abc"});
    // A carriage return is an ordinary byte, not a separator.
    EXPECT_EQ(words("a\r b"), (Words{"a\r", "b"}));
    EXPECT_EQ(words("a\\b"), Words{"a\\b"});
}

TEST(Tokenizer, QuotedSections) {
    EXPECT_EQ(words("say \"two words\" now"), (Words{"say", "two words", "now"}));
    EXPECT_EQ(words("a\"b c\"d"), Words{"ab cd"});
    EXPECT_EQ(words("\"# not a comment\""), Words{"# not a comment"});
    EXPECT_EQ(words("x \"\" y"), (Words{"x", "", "y"}));
    EXPECT_EQ(words("\"\""), Words{""});
    EXPECT_EQ(words("\"\"\"\""), Words{""});
    EXPECT_EQ(words("open \"never closed"), Words{"<untokenizable>"});
    EXPECT_EQ(words("# \"quote in a comment"), Words{});
    // Without quote characters a quote is an ordinary byte.
    EXPECT_EQ(words("\"a b\"", nullptr, nullptr), (Words{"\"a", "b\""}));
    EXPECT_EQ(words("a#b", "", ""), Words{"a#b"});
}

// One list serves many lines; each word knows where it starts and ends in its
// line, quotes included, so that its bytes as written can be taken from it.
TEST(Tokenizer, RefilledListGivesWordsAndTheirOffsets) {
    nqtoken_list* list = nullptr;
    ASSERT_EQ(nqtoken_new(&list, "a long first line of words", " ", "\"", "#", 0, 0), 0);
    ASSERT_EQ(nqtoken_refill(list, "\tab \"c d\"e #f", " \t", "\"", "#"), 0);
    ASSERT_EQ(nqtoken_num(list), 2);
    EXPECT_STREQ(nqtoken_get_token(list, 1), "c de");
    EXPECT_EQ(nqtoken_get_offset(list, 0), 1);
    EXPECT_EQ(nqtoken_get_offset(list, 1), 4);  // at the opening quote
    EXPECT_EQ(nqtoken_get_offset(list, 2), -1);
    EXPECT_EQ(nqtoken_get_end(list, 0), 3);
    EXPECT_EQ(nqtoken_get_end(list, 1), 10);  // past "c d"e, before the blank and the comment
    EXPECT_EQ(nqtoken_get_end(list, 2), -1);
    ASSERT_EQ(nqtoken_refill(list, "abc#def", " \t", "\"", "#"), 0);
    EXPECT_EQ(nqtoken_get_end(list, 0), 3);
    ASSERT_EQ(nqtoken_refill(list, " \"x\"\"\"", " \t", "\"", "#"), 0);
    EXPECT_EQ(nqtoken_get_end(list, 0), 6);
    EXPECT_NE(nqtoken_refill(list, "x \"open", " ", "\"", "#"), 0);
    EXPECT_EQ(nqtoken_num(list), 0);
    // Other sets on the same list: the old ones no longer apply.
    ASSERT_EQ(nqtoken_refill(list, "a,b \"c#d", ",", nullptr, nullptr), 0);
    ASSERT_EQ(nqtoken_num(list), 2);
    EXPECT_STREQ(nqtoken_get_token(list, 1), "b \"c#d");
    nqtoken_delete(list);
}

TEST(Tokenizer, BadIndexesAndNullLists) {
    nqtoken_list* list = nullptr;
    ASSERT_EQ(nqtoken_new(&list, "one", " ", nullptr, nullptr, 0, 0), 0);
    EXPECT_EQ(nqtoken_get_token(list, 1), nullptr);
    EXPECT_EQ(nqtoken_get_token(list, -1), nullptr);
    EXPECT_EQ(nqtoken_get_length(list, 1), -1);
    EXPECT_EQ(nqtoken_get_length(nullptr, 0), -1);
    int value = 7;
    EXPECT_NE(nqtoken_get_int(list, 3, &value), 0);
    EXPECT_EQ(value, 7);
    nqtoken_delete(list);
    EXPECT_EQ(nqtoken_num(nullptr), 0);
    EXPECT_EQ(nqtoken_delete(nullptr), 0);
}

struct Conversion {
    const char* word;
    bool accepted;
};

TEST(Tokenizer, IntegerConversionIsStrict) {
    const Conversion cases[] = {{"0", true},          {"-17", true},         {"+6", true},
                                {"2147483647", true}, {"-2147483648", true}, {"2147483648", false},
                                {"-2147483649", false}, {"99999999999999999999", false},
                                {"0x10", false},       {"1e3", false},        {"5 ", false},
                                {"", false},           {"-", false},          {"12abc", false}};
    for (const Conversion& c : cases) {
        nqtoken_list* list = nullptr;
        ASSERT_EQ(nqtoken_new(&list, (std::string("\"") + c.word + "\"").c_str(), " ", "\"", nullptr, 0, 0), 0);
        int value = 12345;
        EXPECT_EQ(nqtoken_get_int(list, 0, &value) == 0, c.accepted) << c.word;
        const std::string expected = !c.accepted ? "12345" : c.word[0] == '+' ? c.word + 1 : c.word;
        EXPECT_EQ(std::to_string(value), expected) << c.word;
        nqtoken_delete(list);
    }
}

TEST(Tokenizer, DoubleConversionTakesWholeWord) {
    const Conversion cases[] = {{"1", true},     {"-2.5", true},  {"1e-7", true}, {".5", true},
                                {"0x1p3", true}, {"inf", true},   {"nan", true},  {" 1.5", true},
                                {"1.5x", false}, {"", false},     {"1.5 ", false}, {"e5", false}};
    for (const Conversion& c : cases) {
        nqtoken_list* list = nullptr;
        ASSERT_EQ(nqtoken_new(&list, (std::string("\"") + c.word + "\"").c_str(), " ", "\"", nullptr, 0, 0), 0);
        double value = 42;
        EXPECT_EQ(nqtoken_get_double(list, 0, &value) == 0, c.accepted) << c.word;
        if (!c.accepted) {
            EXPECT_EQ(value, 42) << c.word;
        }
        nqtoken_delete(list);
    }
    nqtoken_list* list = nullptr;
    ASSERT_EQ(nqtoken_new(&list, "0x1p3 1e999", " ", nullptr, nullptr, 0, 0), 0);
    double value = 0;
    ASSERT_EQ(nqtoken_get_double(list, 0, &value), 0);
    EXPECT_EQ(value, 8.0);
    ASSERT_EQ(nqtoken_get_double(list, 1, &value), 0);
    EXPECT_TRUE(std::isinf(value));
    nqtoken_delete(list);
}

}  // namespace
