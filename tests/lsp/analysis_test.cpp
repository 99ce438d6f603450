// Where the index puts each word: its bytes as written, quotes included, so
// that ranges, hovers and fixes land on what the author typed.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "lsp/analysis.h"
#include "reader/line_reader.h"
#include "support/definition_generator.h"

namespace quillet::lsp {
namespace {

std::vector<std::string> keywordNamesAsWritten(const std::string& text) {
    const auto analysis = analyse(std::make_shared<const Snapshot>(text, 1), 1, "", 0);
    std::vector<std::string> names;
    for (const Word& word : analysis->words)
        if (word.role == WordRole::KeywordName && word.directive == 0) names.emplace_back(analysis->source(word));
    return names;
}

TEST(WordIndex, SpansKeepTheQuotesTheReaderDropped) {
    struct Case {
        const char* line;
        const char* written;
    };
    for (const Case& c : std::vector<Case>{{"KEYWORD: add ADD_KWD", "add"},
                                           {"KEYWORD: \"add\" ADD_KWD", "\"add\""},
                                           {"KEYWORD: a\"d\"d ADD_KWD", "a\"d\"d"},
                                           {"KEYWORD: add\"\" ADD_KWD", "add\"\""},
                                           {"KEYWORD: \"\"add ADD_KWD", "\"\"add"},
                                           {"KEYWORD: \"a d\" ADD_KWD", "\"a d\""},
                                           {"KEYWORD: add", "add"},
                                           {"KEYWORD: add\"\"", "add\"\""}}) {
        EXPECT_EQ(keywordNamesAsWritten(std::string(c.line) + "\nKEY_SUMMARY: x\n"), std::vector<std::string>{c.written})
            << c.line;
        // At the very end of the document too.
        EXPECT_EQ(keywordNamesAsWritten(c.line), std::vector<std::string>{c.written}) << c.line;
    }
}

// Where each line's words end, so that a '#' after them starts a comment
// and one inside a quoted word does not.
TEST(WordIndex, LinesKnowWhereTheirWordsEnd) {
    const auto analysis = analyse(std::make_shared<const Snapshot>(
                                      "KEYWORD: \"a#b\" ID  # note\nKEY_SUMMARY: one \"two\"\n\n# only\n", 1),
                                  1, "", 0);
    EXPECT_EQ(analysis->wordsEnd, (std::vector<std::uint8_t>{17, 22, 0, 0, 0}));
}

}  // namespace
}  // namespace quillet::lsp

namespace quillet::lsp {
namespace {

// The model keeps no keyword or option records: a hover reads its keyword
// again, and must find what a whole reading, descriptions kept, has there.
TEST(Records, ReadAgainAsTheWholeReadingHasThem) {
    std::size_t compared = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        testing::Lines lines = testing::generate(random);
        for (unsigned broken = random() % 4; broken > 0; --broken) testing::mutate(lines, random);
        const std::string text = testing::join(lines);
        const auto analysis = analyse(std::make_shared<const Snapshot>(text, 1), 1, "", 0);
        lint::DefinitionLinter whole(std::numeric_limits<std::size_t>::max());
        LineReader reader(text);
        whole.read(reader);
        for (const Word& word : analysis->words) {
            if ((word.role != WordRole::KeywordName && word.role != WordRole::OptionName) || word.directive != 0)
                continue;
            const KeywordReading records = analysis->recordsAt(word);
            if (records.keyword == nullptr) continue;
            // The last of its line: a line may hold two KEYWORD: words.
            const std::vector<KeywordDef*>& kept = whole.definitions().keywords;
            const auto same = std::find_if(kept.rbegin(), kept.rend(), [&](const KeywordDef* keyword) {
                return keyword->lineNumber == records.keyword->lineNumber;
            });
            ASSERT_NE(same, kept.rend()) << analysis->text(word) << "\n" << text;
            const KeywordDef& a = *records.keyword;
            const KeywordDef& b = **same;
            ASSERT_EQ(a.options.size(), b.options.size()) << text;
            EXPECT_TRUE(a.name == b.name && a.id == b.id && a.summary == b.summary && a.deprecated == b.deprecated)
                << analysis->text(word) << "\n" << text;
            if (word.role == WordRole::OptionName) {
                ASSERT_NE(records.option, nullptr) << analysis->text(word) << "\n" << text;
                const OptionDef& o = *records.option;
                const auto index = static_cast<std::size_t>(std::find(a.options.begin(), a.options.end(), &o) -
                                                            a.options.begin());
                ASSERT_LT(index, b.options.size());
                const OptionDef& p = *b.options[index];
                EXPECT_TRUE(o.name == p.name && o.id == p.id && o.type == p.type && o.hasDefault == p.hasDefault &&
                            o.defaultText == p.defaultText && o.minimumText == p.minimumText &&
                            o.maximumText == p.maximumText && o.lookupTableName == p.lookupTableName &&
                            o.description == p.description)
                    << analysis->text(word) << "\n" << text;
                compared += !p.description.empty();
            }
        }
    }
    EXPECT_GT(compared, 300u);
}

}  // namespace
}  // namespace quillet::lsp
