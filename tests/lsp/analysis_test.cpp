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

// The model leaves descriptions out; an option's is read again from its
// keyword's lines, and must be what a reading that keeps them gives.
TEST(Descriptions, ReadAgainAsAReadingThatKeepsThem) {
    std::size_t described = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        testing::Lines lines = testing::generate(random);
        for (unsigned broken = random() % 4; broken > 0; --broken) testing::mutate(lines, random);
        const std::string text = testing::join(lines);
        const auto analysis = analyse(std::make_shared<const Snapshot>(text, 1), 1, "", 0);
        lint::DefinitionLinter keeping(std::numeric_limits<std::size_t>::max());
        LineReader reader(text);
        keeping.read(reader);
        const std::vector<KeywordDef*>& kept = keeping.definitions().keywords;
        const std::vector<KeywordDef*>& read = analysis->definitions().keywords;
        ASSERT_EQ(kept.size(), read.size());
        for (const Word& word : analysis->words) {
            if (word.role != WordRole::OptionName || word.directive != 0) continue;
            const OptionDef* option = analysis->optionOf(word);
            const KeywordDef* keyword = analysis->keywordOf(word);
            // Only a keyword of the whole reading's model has a place in it.
            const auto at = std::find(read.begin(), read.end(), keyword);
            if (option == nullptr || at == read.end()) continue;
            const KeywordDef& same = *kept[static_cast<std::size_t>(at - read.begin())];
            const auto index = std::find(keyword->options.begin(), keyword->options.end(), option) -
                               keyword->options.begin();
            ASSERT_LT(static_cast<std::size_t>(index), same.options.size()) << text;
            EXPECT_EQ(analysis->descriptionOf(word), same.options[static_cast<std::size_t>(index)]->description.view())
                << analysis->text(word) << "\n" << text;
            described += !same.options[static_cast<std::size_t>(index)]->description.empty();
        }
    }
    EXPECT_GT(described, 300u);
}

}  // namespace
}  // namespace quillet::lsp
