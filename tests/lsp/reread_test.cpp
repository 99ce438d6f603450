// Reading again only the keyword an edit changed must give exactly what
// reading the whole file gives: random edits, chained, each compared with a
// whole reading of the same text.
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "lsp/analysis.h"
#include "support/definition_generator.h"

namespace quillet::lsp {
namespace {

void expectSame(const Analysis& reread, const Analysis& whole, const std::string& text) {
    ASSERT_EQ(reread.words.size(), whole.words.size()) << text;
    for (std::size_t i = 0; i < whole.words.size(); ++i) {
        const Word& a = reread.words[i];
        const Word& b = whole.words[i];
        ASSERT_TRUE(a.offset == b.offset && a.length == b.length && a.role == b.role && a.directive == b.directive)
            << "word " << i << " at " << b.offset << "\n" << text;
    }
    EXPECT_EQ(reread.wordsEnd, whole.wordsEnd) << text;
    EXPECT_EQ(reread.keywordStarts, whole.keywordStarts) << text;
    EXPECT_EQ(reread.tables, whole.tables) << text;
    ASSERT_EQ(reread.problems.size(), whole.problems.size()) << text;
    for (std::size_t i = 0; i < whole.problems.size(); ++i) {
        const Problem& a = reread.problems[i];
        const Problem& b = whole.problems[i];
        const auto where = [](const Problem& p) {
            std::string s = std::to_string(p.diagnostic.position.line) + ":" +
                            std::to_string(p.diagnostic.position.column) + "@" + std::to_string(p.span.offset) + "+" +
                            std::to_string(p.span.length) + " " + p.diagnostic.message;
            for (std::size_t n = 0; n < p.notes.size(); ++n)
                s += " | " + std::to_string(p.diagnostic.notes[n].position.line) + ":" +
                     std::to_string(p.diagnostic.notes[n].position.column) + "@" + std::to_string(p.notes[n].offset) +
                     "+" + std::to_string(p.notes[n].length) + " " + p.diagnostic.notes[n].message;
            for (std::size_t f = 0; f < p.fixes.size(); ++f)
                s += " | fix " + std::to_string(p.diagnostic.fixes[f].position.line) + ":" +
                     std::to_string(p.diagnostic.fixes[f].position.column) + "@" + std::to_string(p.fixes[f].offset) +
                     "+" + std::to_string(p.fixes[f].length) + " " + p.diagnostic.fixes[f].replacement;
            return s;
        };
        ASSERT_EQ(where(a), where(b)) << text;
        EXPECT_EQ(a.diagnostic.rule, b.diagnostic.rule);
        EXPECT_EQ(a.diagnostic.severity, b.diagnostic.severity);
    }
    // Where each name was first given, for the next edit's reading.
    for (const Word& word : whole.words) {
        if (word.directive != 0) continue;
        const bool keywordName = word.role == WordRole::KeywordName;
        if (!keywordName && word.role != WordRole::KeywordId && word.role != WordRole::OptionId &&
            word.role != WordRole::TableName && word.role != WordRole::EntryId)
            continue;
        const auto placeIn = [&](const Analysis& analysis) {
            const TextRegistry& names = keywordName ? analysis.names->keywordNames : analysis.names->ids;
            const std::optional<Position> place = names.placeOf(whole.text(word));
            return place ? std::to_string(place->line) + ":" + std::to_string(place->column) : "none";
        };
        ASSERT_EQ(placeIn(reread), placeIn(whole)) << whole.text(word) << "\n" << text;
    }
    ASSERT_EQ(reread.keywords.size(), whole.keywords.size()) << text;
    for (const auto& [name, keyword] : whole.keywords) {
        const auto found = reread.keywords.find(name);
        ASSERT_NE(found, reread.keywords.end()) << name;
        const KeywordDef& a = *found->second;
        EXPECT_EQ(a.id.view(), keyword->id.view());
        EXPECT_EQ(a.summary.view(), keyword->summary.view());
        ASSERT_EQ(a.options.size(), keyword->options.size()) << name << "\n" << text;
        for (std::size_t o = 0; o < a.options.size(); ++o) {
            EXPECT_EQ(a.options[o]->name.view(), keyword->options[o]->name.view());
            EXPECT_EQ(a.options[o]->defaultText.view(), keyword->options[o]->defaultText.view());
        }
    }
}

// One edit at a random place: a few bytes typed, deleted or replaced, a
// word of the text typed again (a name taken twice), a line end, a run of
// letters that may make a line too long.
std::string edit(const std::string& text, std::mt19937& random) {
    const auto pick = [&random](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    const std::size_t at = pick(text.size() + 1);
    static const std::string typed = "ax1_ \t:\"#\n\r";
    std::string changed = text;
    switch (pick(6)) {
    case 0: changed.insert(at, 1, typed[pick(typed.size())]); break;
    case 1: changed.erase(at, 1 + pick(6)); break;
    case 2:
        if (at < changed.size()) changed[at] = typed[pick(typed.size())];
        break;
    case 3: {
        const std::size_t from = pick(text.size());
        const std::size_t start = text.rfind(' ', from);
        const std::size_t word = start == std::string::npos ? 0 : start + 1;
        const std::size_t end = text.find_first_of(" \n", word);
        changed.insert(at, text.substr(word, end == std::string::npos ? std::string::npos : end - word) + " ");
        break;
    }
    case 4: changed.insert(at, "\n"); break;
    default: changed.insert(at, std::string(pick(2) == 0 ? 3 : 250, 'w')); break;
    }
    return changed;
}

TEST(Reread, GivesWhatTheWholeReadingGivesAfterAnyEdit) {
    std::size_t edits = 0;
    std::size_t reread = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        testing::Lines lines = testing::generate(random);
        for (unsigned broken = random() % 3; broken > 0; --broken) testing::mutate(lines, random);
        std::string text = testing::join(lines);
        std::shared_ptr<const Analysis> previous = analyse(std::make_shared<const Snapshot>(text, 1), 1, "", 0);
        for (int step = 0; step < 12; ++step) {
            text = edit(text, random);
            auto snapshot = std::make_shared<const Snapshot>(text, step + 2);
            auto whole = analyse(snapshot, 1, "", 0);
            auto again = reanalyse(*previous, snapshot, 1, "");
            ++edits;
            if (again != nullptr) {
                ++reread;
                expectSame(*again, *whole, text);
                if (::testing::Test::HasFatalFailure()) return;
            }
            previous = again != nullptr ? again : whole;
        }
    }
    // These definitions are small: a third of their lines are lookup tables
    // and the first keyword, which are always read whole, and a line made
    // too long or a carriage return keeps the whole file read whole until
    // it goes; most other edits fall within one keyword's lines and are
    // read so.
    EXPECT_GT(reread, edits / 5) << reread << " of " << edits;
}

}  // namespace
}  // namespace quillet::lsp
