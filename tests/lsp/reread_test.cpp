// Reading again only the keyword an edit changed must give exactly what
// reading the whole file gives: random edits, chained, each compared with a
// whole reading of the same text.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "lsp/analysis.h"
#include "lsp/same_analysis.h"
#include "support/definition_generator.h"

namespace quillet::lsp {
namespace {

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

// The version an editor's change makes: `after` as `before` edited, sharing
// the pieces the edit left alone.
std::shared_ptr<const Snapshot> edited(const Snapshot& before, const std::string& after, std::int64_t version) {
    const std::string now = before.text.copy();
    const std::size_t size = std::min(now.size(), after.size());
    std::size_t start = 0;
    while (start < size && now[start] == after[start]) ++start;
    std::size_t kept = 0;
    while (kept < size - start && now[now.size() - 1 - kept] == after[after.size() - 1 - kept]) ++kept;
    return std::make_shared<const Snapshot>(before, start, now.size() - start - kept,
                                            std::string_view(after).substr(start, after.size() - start - kept),
                                            version);
}

TEST(Reread, GivesWhatTheWholeReadingGivesAfterAnyEdit) {
    std::size_t edits = 0;
    std::size_t reread = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        testing::Lines lines = testing::generate(random);
        for (unsigned broken = random() % 3; broken > 0; --broken) testing::mutate(lines, random);
        // Some texts span several of a document's pieces, a keyword's lines
        // across two of them.
        if (seed % 8 == 0)
            lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(random() % (lines.size() + 1)), 1200,
                         std::vector<std::string>{"# a comment long enough that a thousand of them fill a piece"});
        std::string text = testing::join(lines);
        std::shared_ptr<const Analysis> previous = analyse(std::make_shared<const Snapshot>(text, 1), 1, "", 0);
        for (int step = 0; step < 12; ++step) {
            text = edit(text, random);
            auto snapshot = edited(*previous->snapshot, text, step + 2);
            auto whole = analyse(snapshot, 1, "", 0);
            auto again = reanalyse(*previous, snapshot, 1, "");
            ++edits;
            if (again != nullptr) {
                ++reread;
                ASSERT_EQ(differenceBetween(*again, *whole), "") << text;
            }
            previous = again != nullptr ? again : whole;
        }
    }
    // These definitions are small: a quarter of their lines are lookup
    // tables, which are always read whole, and a line made too long or a
    // carriage return keeps the whole file read whole until it goes; most
    // other edits fall within one keyword's lines and are read so.
    EXPECT_GT(reread, edits / 4) << reread << " of " << edits;
}

}  // namespace
}  // namespace quillet::lsp
