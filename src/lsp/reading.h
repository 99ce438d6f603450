#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "lint/diagnostic.h"
#include "lsp/analysis.h"
#include "model/large_block.h"
#include "reader/read_observer.h"

namespace quillet::lsp {

// Where the lines start as the reader counts them: at line feeds only, so
// that lint's line numbers find their bytes. The text may be a part of a
// file, whose first line is the file's line `firstLine`.
class ReaderLines {
public:
    // `lineCount`: at least as many lines as the text has line feeds.
    ReaderLines(const DocumentText& text, std::size_t lineCount, int firstLine = 1);
    // A whole text without a carriage return, whose lines start where
    // `index` has them: its starts are shared, not made again.
    ReaderLines(const DocumentText& text, const LineIndex& index);
    ReaderLines(const ReaderLines&) = delete;
    ReaderLines& operator=(const ReaderLines&) = delete;

    std::size_t count() const { return starts_->size(); }
    // Of the text's lines, the one the file numbers `line`.
    std::size_t index(int line) const { return static_cast<std::size_t>(line - firstLine_); }
    // Within the text; a position before its first line is its start.
    std::size_t offset(Position position) const;

private:
    std::size_t size_;
    int firstLine_;
    LineIndex::Starts owned_;
    const LineIndex::Starts* starts_ = &owned_;
};

// Collects the words the reader shows, as the linter reads them, and where
// each line's last word ends.
class WordCollector final : public ReadObserver {
public:
    WordCollector(const DocumentText& text, const ReaderLines& lines, WordIndex& words,
                  std::vector<std::uint8_t>& wordsEnd, std::vector<KeywordStart>& keywordStarts)
        : text_(text), lines_(lines), words_(words), wordsEnd_(wordsEnd), keywordStarts_(keywordStarts) {}

    void word(const WordEvent& event) override;
    // Records where the last word of the line shown last ends.
    void settleLine();

private:
    const DocumentText& text_;
    const ReaderLines& lines_;
    WordIndex& words_;
    std::vector<std::uint8_t>& wordsEnd_;
    std::vector<KeywordStart>& keywordStarts_;
    // The line's last word so far: only its end is needed, so the words of
    // a long text are not measured one by one.
    struct {
        std::size_t line = 0;  // 1 + its index in the text
        int column = 0;
        std::size_t offset = 0;
        std::size_t size = 0;
    } last_;
};

std::size_t lineFeeds(std::string_view text);

// The first KEYWORD: word at or after `offset`.
std::vector<KeywordStart>::const_iterator keywordStartAt(const std::vector<KeywordStart>& starts, std::size_t offset);

// One keyword read alone: its lines and the next keyword's KEYWORD:.
struct PartReading {
    std::shared_ptr<lint::DefinitionLinter> linter = std::make_shared<lint::DefinitionLinter>(
        std::numeric_limits<std::size_t>::max());
    std::string text;
    WordIndex words;  // offsets within `text`
    std::vector<std::uint8_t> wordsEnd;
    std::vector<KeywordStart> keywordStarts;
    std::vector<lint::Diagnostic> diagnostics;
};

// Reads `lines`, the file's from `firstLine` on, then `nextLine` (none: the
// lines end the file), over `earlier`'s names and tables.
PartReading readPart(std::string_view lines, const std::string& nextLine, const Analysis& earlier, int firstLine,
                     bool descriptions = false);

// A word's place: the word there, or the bytes up to the next blank.
Span spanAt(const DocumentText& text, const WordIndex& words, std::size_t offset);

// The diagnostics with their places in `text`, whose words are `words`;
// `offsetOf` takes a position to its byte offset there.
template <typename OffsetOf>
std::vector<Problem> locate(std::vector<lint::Diagnostic> diagnostics, const DocumentText& text, const WordIndex& words,
                            const OffsetOf& offsetOf) {
    std::vector<Problem> problems;
    problems.reserve(diagnostics.size());
    for (lint::Diagnostic& diagnostic : diagnostics) {
        const Span span = spanAt(text, words, offsetOf(diagnostic.position));
        Problem problem{std::move(diagnostic), span, {}, {}};
        for (const lint::Note& note : problem.diagnostic.notes)
            problem.notes.push_back(spanAt(text, words, offsetOf(note.position)));
        for (const lint::Fix& fix : problem.diagnostic.fixes)
            problem.fixes.push_back({offsetOf(fix.position), fix.length});
        problems.push_back(std::move(problem));
    }
    return problems;
}

// The aliases file at `path` checked against the keywords, or null where it
// cannot be read.
std::unique_ptr<const AliasesFile> readAliases(const std::string& path, const Analysis::KeywordsByName& keywords);

}  // namespace quillet::lsp
