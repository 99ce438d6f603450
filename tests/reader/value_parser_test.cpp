#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/definition_set.h"
#include "nqtoken.h"
#include "reader/value_parser.h"
#include "support/error_capture.h"

using namespace quillet;
using quillet::testing::ErrorCapture;

namespace {

struct Parsed {
    int result;
    std::int64_t value;
};

Parsed parse(const std::string& text) {
    std::int64_t value = -12345;
    int result = parseNumber(text, value);
    return {result, value};
}

TEST(ParseNumber, DecimalHexadecimalAndShiftForms) {
    EXPECT_EQ(parse("0x1F").value, 31);
    EXPECT_EQ(parse("0x1F").result, 0);
    EXPECT_EQ(parse("ff").result, 1);
    EXPECT_EQ(parse("xyz").result, 0);  // any text with an x succeeds
    EXPECT_EQ(parse("xyz").value, 0);
    EXPECT_EQ(parse("BOX").value, 0xB);  // the x makes it hexadecimal
    EXPECT_EQ(parse("3<2").value, 12);
    EXPECT_EQ(parse("1<<4").value, 16);
    EXPECT_EQ(parse("1<4").value, 16);
    EXPECT_EQ(parse("5<").result, 1);
    EXPECT_EQ(parse("<3").value, 0);
    EXPECT_EQ(parse("1<b").value, 1);
    EXPECT_EQ(parse("1<65").value, 2);  // the count is taken modulo 64
    EXPECT_EQ(parse("-7").value, -7);
    EXPECT_EQ(parse(" +8").value, 8);
    EXPECT_EQ(parse("12abc").value, 12);
    EXPECT_EQ(parse("").result, 1);
    EXPECT_EQ(parse("-").result, 1);
    EXPECT_EQ(parse("99999999999999999999").value, std::numeric_limits<long>::max());
}

TEST(ParseNumber, CallersKeepTheLow32Bits) {
    EXPECT_EQ(low32(parse("0xFFFFFFFF").value), -1);
    EXPECT_EQ(low32(parse("1<31").value), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(low32(parse("4294967298").value), 2);
    EXPECT_EQ(low32(parse("-0x10").value), -16);
}

class ValueParser : public ::testing::Test {
protected:
    OptionDef& option(OptionType type) {
        OptionDef* made = definitions_.newOption();
        made->type = type;
        return *made;
    }
    // Parses `line`'s single word as the option's default.
    bool setDefault(OptionDef& target, const char* line) {
        nqtoken_list* list = nullptr;
        EXPECT_EQ(nqtoken_new(&list, line, " \t\n", "\"", "#", 0, 0), 0);
        bool accepted = parseDefaultValue(target, capture_.context(), list, 0);
        nqtoken_delete(list);
        return accepted;
    }
    LookupTableDef& table(const char* name) {
        LookupTableDef* made = definitions_.newLookupTable(name);
        definitions_.lookupTables[name] = made;
        return *made;
    }
    bool minimum(OptionDef& target, const char* text) {
        return setMinimum(definitions_, capture_.context(), target, text);
    }
    bool maximum(OptionDef& target, const char* text) {
        return setMaximum(definitions_, capture_.context(), target, text);
    }

    ErrorCapture capture_;
    DefinitionSet definitions_;
};

TEST_F(ValueParser, IntegerDefaultsKeepNonNumbersAsText) {
    OptionDef& numeric = option(OptionType::NQ_INT_TYPE);
    EXPECT_TRUE(setDefault(numeric, "0x10"));
    EXPECT_TRUE(numeric.hasDefault);
    EXPECT_EQ(numeric.intDefault(), 16);
    OptionDef& symbolic = option(OptionType::NQ_INT_TYPE);
    EXPECT_TRUE(setDefault(symbolic, "RED"));
    EXPECT_FALSE(symbolic.hasDefault);
    EXPECT_EQ(symbolic.defaultText, "RED");
    EXPECT_EQ(capture_.messages(), "");
}

TEST_F(ValueParser, BooleanDefaultsAreExactLowerCaseWords) {
    for (const char* word : {"true", "on"}) {
        OptionDef& flag = option(OptionType::NQ_BOOL_TYPE);
        EXPECT_TRUE(setDefault(flag, word));
        EXPECT_TRUE(flag.boolDefault());
    }
    for (const char* word : {"false", "off"}) {
        OptionDef& flag = option(OptionType::NQ_BOOL_TYPE);
        EXPECT_TRUE(setDefault(flag, word));
        EXPECT_FALSE(flag.boolDefault());
    }
    OptionDef& refused = option(OptionType::NQ_BOOL_TYPE);
    EXPECT_FALSE(setDefault(refused, "TRUE"));
    EXPECT_FALSE(setDefault(refused, "1"));
    EXPECT_FALSE(refused.hasDefault);
    EXPECT_EQ(capture_.messages(),
              "FATAL Bad boolean default value: 'TRUE'\nFATAL Bad boolean default value: '1'\n");
}

TEST_F(ValueParser, DoubleAndStringDefaults) {
    OptionDef& real = option(OptionType::NQ_DOUBLE_TYPE);
    EXPECT_TRUE(setDefault(real, "\" 1.5\""));  // strtod skips the leading blank
    EXPECT_EQ(real.doubleDefault(), 1.5);
    EXPECT_FALSE(setDefault(option(OptionType::NQ_DOUBLE_TYPE), "\"\""));
    OptionDef& text = option(OptionType::NQ_STRING_TYPE);
    EXPECT_TRUE(setDefault(text, "\"\""));
    EXPECT_TRUE(text.hasDefault);
    EXPECT_EQ(text.stringDefault(), "");
    EXPECT_EQ(capture_.messages(), "FATAL Bad double default value: ''\n");
}

TEST_F(ValueParser, IntegerLimitsAreCheckedStrictlyAgainstTheDefault) {
    OptionDef& level = option(OptionType::NQ_INT_TYPE);
    ASSERT_TRUE(setDefault(level, "5"));
    EXPECT_TRUE(minimum(level, "5"));
    EXPECT_TRUE(maximum(level, "+5"));
    EXPECT_FALSE(minimum(level, "6"));
    EXPECT_FALSE(maximum(level, "4"));
    EXPECT_EQ(level.minimumText, "5");
    EXPECT_EQ(level.maximumText, "+5");
    EXPECT_EQ(capture_.messages(), "Minimum value :'6' is larger than the default value '5'\n"
                                   "Maximum value :'4' is less than the default value '5'\n");
}

TEST_F(ValueParser, IntegerLimitsMayNameAnEntryIdOfAnyTable) {
    definitions_.addLookupEntry(table("Beta"), "BOTTOM", "bottom", 7);
    definitions_.addLookupEntry(table("Alpha"), "TOP", "top", 3);
    OptionDef& level = option(OptionType::NQ_INT_TYPE);
    EXPECT_TRUE(maximum(level, "TOP"));
    EXPECT_EQ(level.maximumText, "TOP");
    EXPECT_FALSE(minimum(level, "top"));  // names are not searched
    EXPECT_FALSE(minimum(level, ""));
    EXPECT_FALSE(minimum(level, " \t"));
    EXPECT_TRUE(minimum(level, "2 and more"));  // the first word decides, the text is kept
    EXPECT_EQ(level.minimumText, "2 and more");
    EXPECT_EQ(capture_.messages(), "DEBUG   Found Table Name entry (TOP). Value is 3\n");
}

TEST_F(ValueParser, DoubleLimitsPrintInShortestForm) {
    OptionDef& real = option(OptionType::NQ_DOUBLE_TYPE);
    ASSERT_TRUE(setDefault(real, "1234567"));
    EXPECT_FALSE(maximum(real, "0.5"));
    EXPECT_FALSE(minimum(real, "1e8"));
    EXPECT_FALSE(minimum(real, "TOP"));  // no entry look-up for doubles
    EXPECT_TRUE(minimum(real, "nan"));   // a comparison with NaN never fails
    EXPECT_TRUE(maximum(real, "1234567"));
    EXPECT_EQ(capture_.messages(), "Maximum value :'0.5' is less than the default value '1.23457e+06'\n"
                                   "Minimum value :'1e+08' is larger than the default value '1.23457e+06'\n");
}

TEST_F(ValueParser, SymbolicDefaultsResolveThroughEntryNamesOfTheOwnTable) {
    LookupTableDef& colors = table("Colors");
    definitions_.addLookupEntry(colors, "RED", "red", 1);
    definitions_.addLookupEntry(colors, "R", "RED", 2);
    OptionDef& paint = option(OptionType::NQ_INT_TYPE);
    ASSERT_TRUE(setDefault(paint, "RED"));
    EXPECT_FALSE(resolveSymbolicDefault(definitions_, paint));  // no table yet
    paint.setLookupTable("Colors");
    EXPECT_TRUE(resolveSymbolicDefault(definitions_, paint));
    EXPECT_TRUE(paint.hasDefault);
    EXPECT_EQ(paint.intDefault(), 2);

    OptionDef& unresolved = option(OptionType::NQ_INT_TYPE);
    ASSERT_TRUE(setDefault(unresolved, "BLUE"));
    unresolved.setLookupTable("Colors");
    EXPECT_TRUE(resolveSymbolicDefault(definitions_, unresolved));
    EXPECT_FALSE(unresolved.hasDefault);

    // After a numeric default the text is empty, so an entry whose name is
    // empty replaces that default.
    definitions_.addLookupEntry(colors, "NONE", "", 0);
    OptionDef& numeric = option(OptionType::NQ_INT_TYPE);
    ASSERT_TRUE(setDefault(numeric, "9"));
    numeric.setLookupTable("Colors");
    EXPECT_TRUE(resolveSymbolicDefault(definitions_, numeric));
    EXPECT_EQ(numeric.intDefault(), 0);

    EXPECT_TRUE(resolveSymbolicDefault(definitions_, option(OptionType::NQ_BOOL_TYPE)));
}

}  // namespace
