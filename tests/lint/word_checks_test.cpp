#include <gtest/gtest.h>

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
        EXPECT_EQ(finding ? kRules[finding->rule].name : "", rule) << word;
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

}  // namespace
