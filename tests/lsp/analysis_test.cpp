// Where the index puts each word: its bytes as written, quotes included, so
// that ranges, hovers and fixes land on what the author typed.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lsp/analysis.h"

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
