#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "reader/definition_reader.h"
#include "reader/line_reader.h"
#include "reader/value_parser.h"
#include "support/error_capture.h"

using namespace quillet;
using quillet::testing::ErrorCapture;

namespace {

// Reads `definition` as the driver does; the messages as they would print.
struct Read {
    bool accepted;
    std::string messages;
};

Read read(DefinitionSet& definitions, std::string_view definition) {
    ErrorCapture capture;
    LineReader lines(definition);
    DefinitionReader reader(definitions, capture.context().report);
    const bool accepted = reader.read(lines);
    return {accepted, capture.messages()};
}

TEST(ParseNumber, DecimalHexadecimalAndShiftForms) {
    struct Row {
        const char* text;
        bool parsed;
        std::int64_t value;
    };
    const Row rows[] = {
        {"0x1F", true, 31}, {"ff", false, 0}, {"xyz", true, 0},  // any text with an x is a number
        {"BOX", true, 0xB}, {"3<2", true, 12}, {"1<<4", true, 16}, {"1<4", true, 16}, {"5<", false, 0},
        {"<3", true, 0}, {"1<b", true, 1}, {"1<65", true, 2},  // the count is taken modulo 64
        {"-7", true, -7}, {" +8", true, 8}, {"12abc", true, 12}, {"", false, 0}, {"-", false, 0},
        {"99999999999999999999", true, std::numeric_limits<long>::max()},
    };
    for (const Row& row : rows) {
        std::int64_t value = 0;
        EXPECT_EQ(parseNumber(row.text, value), row.parsed) << row.text;
        if (row.parsed) {
            EXPECT_EQ(value, row.value) << row.text;
        }
    }
    std::int64_t value = 0;
    ASSERT_TRUE(parseNumber("0xFFFFFFFF", value));
    EXPECT_EQ(low32(value), -1);
    ASSERT_TRUE(parseNumber("4294967298", value));
    EXPECT_EQ(low32(value), 2);
}

// Values, defaults and limits, with the exact messages each gives.
TEST(DefinitionReader, ValuesAndLimits) {
    const std::string trail = "FATAL Error processing command on line: 1\nFATAL Currently processing keyword: 'k'\n"
                              "FATAL Currently processing option: 'o'\n";
    struct Row {
        std::string definition;
        std::string messages;
    };
    const std::vector<Row> rows = {
        {"KEYWORD: k K OPTION: o O NQ_DOUBLE_TYPE 1234567 OPT_MAXIMUM: 0.5",
         "Maximum value :'0.5' is less than the default value '1.23457e+06'\n"
         "FATAL OPT_MAXIMUM: invalid value: '0.5' \n" + trail},
        {"KEYWORD: k K OPTION: o O NQ_DOUBLE_TYPE 1 OPT_MINIMUM: 1e8",
         "Minimum value :'1e+08' is larger than the default value '1'\nFATAL OPT_MINIMUM: invalid value: '1e8' \n" +
             trail},
        // A comparison with NaN never fails; a limit equal to the default passes.
        {"KEYWORD: k K OPTION: o O NQ_DOUBLE_TYPE 1 OPT_MINIMUM: nan OPT_MAXIMUM: 1", ""},
        {"KEYWORD: k K OPTION: o O NQ_DOUBLE_TYPE \" 1.5\"", ""},
        {"KEYWORD: k K OPTION: o O NQ_DOUBLE_TYPE \"\"",
         "FATAL Bad double default value: ''\nFATAL Bad default value for OPTION: defined on line 1\n" + trail},
        {"KEYWORD: k K OPTION: o O NQ_BOOL_TYPE TRUE",
         "FATAL Bad boolean default value: 'TRUE'\nFATAL Bad default value for OPTION: defined on line 1\n" + trail},
        // The first word of an integer limit decides; the whole text is kept.
        {"KEYWORD: k K OPTION: o O NQ_INT_TYPE 5 OPT_MINIMUM: \"2 and more\"", ""},
        {"LOOKUP: T TOP top 3 KEYWORD: k K OPTION: o O NQ_INT_TYPE 1 OPT_MAXIMUM: TOP",
         "DEBUG   Found Table Name entry (TOP). Value is 3\n"},
        // Entry names are no limits; only IDs are.
        {"LOOKUP: T TOP top 3 KEYWORD: k K OPTION: o O NQ_INT_TYPE 1 OPT_MAXIMUM: top",
         "FATAL OPT_MAXIMUM: invalid value: 'top' \n" + trail},
        {"KEYWORD: k K OPTION: o O NQ_INT_TYPE 5 OPT_MINIMUM: \" \"",
         "FATAL OPT_MINIMUM: invalid value: ' ' \n" + trail},
    };
    for (const Row& row : rows) {
        DefinitionSet definitions;
        const Read result = read(definitions, row.definition);
        EXPECT_EQ(result.messages, row.messages) << row.definition;
        EXPECT_EQ(result.accepted, row.messages.find("FATAL") == std::string::npos) << row.definition;
    }
}

TEST(DefinitionReader, BuildsTheModel) {
    DefinitionSet definitions;
    const Read result = read(definitions,
                             "LOOKUP: Colors RED red 1 R RED 0x10 NONE \"\" 0\n"
                             "KEYWORD: paint PAINT KEY_DESCRIPTION: Sets \"\" the size\n"
                             "KEY_SUMMARY: Sets \"\" the size KEY_OPERANDS_NEED_FORMATTING:\n"
                             "OPTION: color COLOR NQ_INT_TYPE RED OPT_LOOKUP: Colors OPT_DESCRIPTION: a \"\" b\n"
                             "OPTION: size SIZE NQ_INT_TYPE 9 OPT_LOOKUP: Colors\n"
                             "KEYWORD: other OTHER KEY_OPERANDS_ARE_MODEL_NAME: 3 OPTION: x X NQ_BOOL_TYPE on\n"
                             "OPT_READONLY:\n");
    ASSERT_TRUE(result.accepted) << result.messages;
    ASSERT_EQ(definitions.keywords.size(), 2u);
    const KeywordDef& paint = *definitions.keywords[0];
    EXPECT_EQ(paint.description, "Sets the size ");  // only here an empty word adds nothing
    EXPECT_EQ(paint.summary, "Sets  the size ");
    EXPECT_EQ(paint.numTokensInModelName, "1");
    EXPECT_TRUE(paint.operandsNeedFormatting);
    ASSERT_EQ(paint.options.size(), 2u);
    const OptionDef& color = *paint.options[0];
    EXPECT_EQ(color.description, "a  b ");
    // Symbolic defaults are found among entry names, not IDs.
    EXPECT_TRUE(color.hasDefault);
    EXPECT_EQ(color.intDefault(), 16);
    EXPECT_EQ(color.minimumText, "0");
    EXPECT_EQ(color.maximumText, "16");
    // After a numeric default the text is empty, so an entry with an empty name replaces it.
    EXPECT_EQ(paint.options[1]->intDefault(), 0);
    const KeywordDef& other = *definitions.keywords[1];
    EXPECT_EQ(other.numTokensInModelName, "3");
    EXPECT_TRUE(other.options[0]->readOnly);  // OPT_READONLY: at the very end still applies
    // Every record drew a serial, the spares of the end of input included.
    EXPECT_EQ(paint.serial, 1);
    EXPECT_EQ(other.serial, 2);
    EXPECT_EQ(other.options[0]->serial, 3);
    EXPECT_EQ(definitions.newKeyword()->serial, 4);
    EXPECT_EQ(definitions.newOption()->serial, 5);
}

// Every message carries the line and 1-based byte column of the word that
// caused it, quoted words at their opening quote.
TEST(DefinitionReader, ReportsTheWordsPosition) {
    DefinitionSet definitions;
    ErrorCapture capture;
    std::vector<std::pair<Position, std::string>> messages;
    capture.context().report.listen([&](const Reporter::Message& message) {
        messages.emplace_back(message.position, std::string(message.text));
    });
    LineReader lines("KEYWORD: k K\n\tOPTION: o \"O\" NQ_BAD 1\n");
    DefinitionReader reader(definitions, capture.context().report);
    Line line{};
    ASSERT_TRUE(lines.next(line) && reader.readLine(line, 1));
    ASSERT_TRUE(lines.next(line));
    EXPECT_FALSE(reader.readLine(line, 2));
    ASSERT_GE(messages.size(), 2u);
    EXPECT_EQ(messages[0].first.line, 2);
    EXPECT_EQ(messages[0].first.column, 16);
    EXPECT_EQ(messages[0].second, "Unknown type for current option: NQ_BAD\n");
    EXPECT_EQ(messages[1].second, "Error processing command on line: 2\n");
}

}  // namespace

// A check given up part way: once asked, reading ends with the block in
// hand; never asked, every line is read.
TEST(LineReader, StopsWithTheBlockInHandOnceAsked) {
    const std::string line = "    OPT_DESCRIPTION: a line of the definition\n";
    std::string text;
    while (text.size() < (std::size_t{3} << 20)) text += line;
    const std::size_t all = text.size() / line.size();
    for (const bool asked : {false, true}) {
        std::atomic<bool> stop = false;
        LineReader lines(text, &stop);
        Line read{};
        std::size_t count = 0;
        while (lines.next(read))
            if (++count == 1) stop = asked;
        // The first block holds a megabyte and the longest line.
        if (asked) EXPECT_LE(count, ((std::size_t{1} << 20) + LineReader::kMaxLine + 1) / line.size() + 1);
        else EXPECT_EQ(count, all);
    }
}

// Property: a text given in pieces, cut anywhere (mid-line, empty pieces,
// across the reader's blocks), reads as the whole text does, a line too long
// included.
TEST(LineReader, PiecesReadAsTheWholeText) {
    std::mt19937 random(31);
    const auto lines = [](LineReader& reader) {
        std::vector<std::string> read;
        Line line{};
        while (reader.next(line)) read.emplace_back(line.text, line.size);
        read.push_back(reader.stoppedAtLongLine() ? "(too long)" : "(end)");
        return read;
    };
    for (int round = 0; round < 40; ++round) {
        std::string text;
        const std::size_t size = round % 4 == 0 ? (std::size_t{3} << 20) : random() % 2000;
        while (text.size() < size) text += std::string(random() % 60, 'a' + static_cast<char>(random() % 26)) + "\n";
        if (round % 5 == 1) text += std::string(300, 'x');
        std::vector<std::string_view> pieces;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t count = std::min<std::size_t>(random() % (round % 4 == 0 ? 900000 : 90), text.size() - at);
            pieces.push_back(std::string_view(text).substr(at, count));
            at += count;
        }
        LineReader whole(text);
        LineReader cut(pieces);
        ASSERT_EQ(lines(cut), lines(whole)) << "round " << round;
    }
}
