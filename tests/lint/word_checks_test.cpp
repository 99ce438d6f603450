#include <gtest/gtest.h>

#include "lint/raw_word.h"
#include "lint/suggestions.h"
#include "lint/word_checks.h"

using namespace quillet::lint;

namespace {

// Which rule, if any, each accepted integer breaks.
TEST(WordChecks, IntegersReadOtherwiseThanWritten) {
    const std::pair<const char*, const char*> rows[] = {
        {"42", ""}, {"-2147483648", ""}, {"+7", ""}, {"0x7FFFFFFF", ""}, {"1<30", ""}, {"3<<2", ""},
        {"12abc", "trailing-characters"}, {"max", "trailing-characters"}, {"0x1G", "trailing-characters"},
        {"1<2<3", "trailing-characters"}, {"1<4 ", "trailing-characters"},
        {"2147483648", "number-out-of-range"}, {"-2147483649", "number-out-of-range"},
        {"99999999999999999999", "number-out-of-range"}, {"0xFFFFFFFF", "number-out-of-range"},
        {"1<31", "number-out-of-range"}, {"1<64", "number-out-of-range"},
    };
    for (const auto& [word, rule] : rows) {
        const auto finding = checkInteger(word);
        EXPECT_EQ(finding ? quillet::lint::rule(finding->rule).name : "", rule) << word;
    }
}

TEST(WordChecks, MisspeltDirectives) {
    const std::pair<const char*, const char*> rows[] = {
        {"OPT_DESCRIPTON:", "OPT_DESCRIPTION:"}, {"KEY_SUMAMRY:", "KEY_SUMMARY:"}, {"keyword:", "KEYWORD:"},
        {"OPTON:", "OPTION:"}, {"KEYWORD:\r", "KEYWORD:"}, {"OPTIONS:", "OPTION:"},
        {"Note:", ""}, {"KEY_DESCRIPTION", ""}, {"LOOK:", ""}, {":", ""},
    };
    for (const auto& [word, directive] : rows) EXPECT_EQ(misspeltDirective(word).value_or(""), directive) << word;
}

// Letter case first, then the nearest within the allowance for the length.
TEST(Suggestions, ClosestWordAndMeantWords) {
    const std::vector<std::string_view> tables = {"Waveform", "Wave", "Detector"};
    const std::pair<const char*, const char*> rows[] = {
        {"waveform", "Waveform"}, {"Wavefrom", "Waveform"}, {"WAVE", "Wave"}, {"Wav", "Wave"},
        {"Wxvx", ""}, {"Detectors", "Detector"}, {"Dtcr", ""},
    };
    for (const auto& [word, meant] : rows) EXPECT_EQ(closestWord(word, tables).value_or(""), meant) << word;
    const std::pair<const char*, const char*> types[] = {
        {"NQ_INTT_TYPE", "NQ_INT_TYPE"}, {"nq_bool_type", "NQ_BOOL_TYPE"}, {"int", "NQ_INT_TYPE"},
        {"NQ_REAL_TYPE", "NQ_DOUBLE_TYPE"}, {"String", "NQ_STRING_TYPE"}, {"NQ_COMPLEX_TYPE", ""},
    };
    for (const auto& [word, meant] : types) EXPECT_EQ(meantType(word).value_or(""), meant) << word;
    const std::pair<const char*, const char*> booleans[] = {
        {"yes", "true"}, {"No", "false"}, {"TRUE", "true"}, {"Off", "off"}, {"ture", "true"}, {"maybe", ""},
    };
    for (const auto& [word, meant] : booleans) EXPECT_EQ(meantBoolean(word).value_or(""), meant) << word;
}

// A word as written runs to a blank or comment outside quotes; a line's
// final carriage return is not part of it.
TEST(RawWord, ExtentAndQuotes) {
    const std::string_view line = "KEY_DESCRIPTION: Use the \"main input\"s a\"b\"\r";
    EXPECT_EQ(rawWordAt(line, 26).text, "\"main input\"s");
    EXPECT_TRUE(rawWordAt(line, 26).quoted);
    EXPECT_EQ(rawWordAt(line, 18).text, "Use");
    EXPECT_FALSE(rawWordAt(line, 18).quoted);
    EXPECT_EQ(rawWordAt(line, 40).text, "a\"b\"");
    EXPECT_EQ(rawWordAt("x#y", 1).text, "x");
}

}  // namespace
