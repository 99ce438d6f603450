#include "lsp/analysis.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <unordered_set>

#include "reader/line_reader.h"

namespace quillet::lsp {

namespace {

// Where the lines start as the reader counts them: at line feeds only, so
// that lint's line numbers find their bytes.
class ReaderLines {
public:
    // `lineCount`: at least as many lines as the text has line feeds.
    ReaderLines(std::string_view text, std::size_t lineCount) : text_(text) {
        starts_.reserve(lineCount + 1);
        starts_.push_back(0);
        for (const char* at = text.data(), *end = at + text.size();
             (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)))) != nullptr;)
            starts_.push_back(static_cast<std::uint32_t>(++at - text.data()));
    }

    std::size_t count() const { return starts_.size(); }

    std::size_t offset(Position position) const {
        if (position.line < 1) return 0;
        const auto line = static_cast<std::size_t>(position.line - 1);
        if (line >= starts_.size()) return text_.size();
        return std::min(starts_[line] + static_cast<std::size_t>(std::max(position.column, 1) - 1), text_.size());
    }

private:
    std::string_view text_;
    // Offsets fit 32 bits: the server takes no document of 4 GiB or more.
    std::vector<std::uint32_t, LargePageAllocator<std::uint32_t>> starts_;
};

// The bytes a word spans from `offset`: its text, with the quotes that the
// reader dropped from it. Most words have none, and long texts are common:
// those are measured without a byte-by-byte walk.
std::size_t sourceLength(std::string_view source, std::size_t offset, std::size_t size) {
    const std::string_view plain = source.substr(offset, size);
    if (plain.size() == size && plain.find('"') == std::string_view::npos &&
        (offset + size == source.size() || source[offset + size] != '"'))
        return size;
    std::size_t at = offset;
    for (std::size_t taken = 0; at < source.size() && (taken < size || source[at] == '"'); ++at)
        if (source[at] != '"') ++taken;
    return at - offset;
}

bool isIndexed(WordRole role) {
    return role != WordRole::Text && role != WordRole::Unused && role != WordRole::Extra;
}

// Collects the words the reader shows, as the linter reads them.
class WordCollector final : public ReadObserver {
public:
    WordCollector(std::string_view text, const ReaderLines& lines, Analysis& analysis)
        : text_(text), lines_(lines), words_(analysis.words), wordsEnd_(analysis.wordsEnd) {}

    void word(const WordEvent& event) override {
        const std::size_t offset = lines_.offset(event.position);
        const auto line = static_cast<std::size_t>(event.position.line);
        if (line != last_.line) settleLine();
        last_ = {line, event.position.column, offset, event.text.size()};
        if (event.directive == nullptr && !isIndexed(event.role)) return;
        const std::size_t length = sourceLength(text_, offset, event.text.size());
        const auto directive = static_cast<std::uint8_t>(event.directive ? rowIndex(*event.directive) + 1 : 0);
        const Word word{static_cast<std::uint32_t>(offset),
                        static_cast<std::uint16_t>(std::min<std::size_t>(length, std::numeric_limits<std::uint16_t>::max())),
                        event.role, directive};
        // A refused word read again as a directive is shown twice.
        if (!words_.empty() && words_.back().offset == word.offset) words_.back() = word;
        else words_.push_back(word);
    }

    // Records where the last word of the line shown last ends.
    void settleLine() {
        if (last_.line == 0) return;
        if (wordsEnd_.size() < last_.line) wordsEnd_.resize(last_.line);
        const std::size_t end = static_cast<std::size_t>(last_.column - 1) + sourceLength(text_, last_.offset, last_.size);
        wordsEnd_[last_.line - 1] = static_cast<std::uint8_t>(std::min<std::size_t>(end, 255));
    }

private:
    std::string_view text_;
    const ReaderLines& lines_;
    WordIndex& words_;
    std::vector<std::uint8_t>& wordsEnd_;
    // The line's last word so far: only its end is needed, so the words of
    // a long text are not measured one by one.
    struct {
        std::size_t line = 0;
        int column = 0;
        std::size_t offset = 0;
        std::size_t size = 0;
    } last_;
};

// From a position up to the next blank or line end, at least one byte.
std::size_t runLength(std::string_view text, std::size_t offset) {
    std::size_t end = offset;
    while (end < text.size() && text[end] != ' ' && text[end] != '\t' && text[end] != '\n' && text[end] != '\r') ++end;
    return std::max<std::size_t>(end - offset, 1);
}

Span spanAt(std::string_view text, const WordIndex& words, std::size_t offset) {
    const auto found = std::lower_bound(words.begin(), words.end(), offset,
                                        [](const Word& word, std::size_t at) { return word.offset < at; });
    if (found != words.end() && found->offset == offset) return {offset, found->length};
    return {offset, runLength(text, offset)};
}

std::vector<Problem> locate(std::vector<lint::Diagnostic> diagnostics, std::string_view text,
                            const ReaderLines& lines, const WordIndex& words) {
    std::vector<Problem> problems;
    problems.reserve(diagnostics.size());
    for (lint::Diagnostic& diagnostic : diagnostics) {
        const Span span = spanAt(text, words, lines.offset(diagnostic.position));
        Problem problem{std::move(diagnostic), span, {}, {}};
        for (const lint::Note& note : problem.diagnostic.notes)
            problem.notes.push_back(spanAt(text, words, lines.offset(note.position)));
        for (const lint::Fix& fix : problem.diagnostic.fixes)
            problem.fixes.push_back({lines.offset(fix.position), fix.length});
        problems.push_back(std::move(problem));
    }
    return problems;
}

// Made in place: its uses view its text, which a move of a short string
// would leave behind.
std::unique_ptr<const AliasesFile> readAliases(const std::string& path, const DefinitionSet& definitions) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return nullptr;
    auto file = std::make_unique<AliasesFile>();
    file->path = path;
    file->text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    file->lines = LineIndex(file->text);
    std::unordered_set<std::string> keywords;
    for (const KeywordDef* keyword : definitions.keywords) keywords.emplace(keyword->name);
    file->problems = locate(lint::checkAliases(file->text, std::move(keywords), &file->uses), file->text,
                            ReaderLines(file->text, file->lines.lines()), {});
    return file;
}

}  // namespace

std::string Analysis::text(const Word& word) const {
    std::string text;
    for (char c : source(word))
        if (c != '"') text.push_back(c);
    return text;
}

const Word* Analysis::wordAt(std::size_t offset) const {
    auto after = std::upper_bound(words.begin(), words.end(), offset,
                                  [](std::size_t at, const Word& word) { return at < word.offset; });
    if (after == words.begin()) return nullptr;
    const Word& word = *std::prev(after);
    return offset <= word.offset + word.length ? &word : nullptr;
}

const KeywordDef* Analysis::keywordOf(const Word& word) const {
    for (const Word* at = &word; at >= words.data(); --at) {
        if (at->role == WordRole::KeywordName && at->directive == 0) {
            const auto found = keywords.find(text(*at));
            return found == keywords.end() ? nullptr : found->second;
        }
    }
    return nullptr;
}

const OptionDef* Analysis::optionOf(const Word& word) const {
    const KeywordDef* keyword = keywordOf(word);
    if (keyword == nullptr) return nullptr;
    for (const Word* at = &word; at >= words.data(); --at) {
        if (at->directive != 0 && at->spec()->directive == Directive::KEYWORD) return nullptr;
        if (at->role != WordRole::OptionName || at->directive != 0) continue;
        const std::string name = text(*at);
        for (const OptionDef* option : keyword->options)
            if (option->name == name) return option;
        return nullptr;
    }
    return nullptr;
}

std::shared_ptr<const Analysis> analyse(std::shared_ptr<const Snapshot> snapshot, std::uint64_t generation,
                                        const std::string& aliasesPath, std::size_t expectedWords,
                                        const std::atomic<bool>* stop) {
    auto analysis = std::make_shared<Analysis>();
    analysis->snapshot = std::move(snapshot);
    analysis->generation = generation;
    const std::string_view text = analysis->snapshot->text;
    analysis->linter = std::make_unique<lint::DefinitionLinter>(std::numeric_limits<std::size_t>::max());
    const ReaderLines lines(text, analysis->snapshot->lines.lines());
    analysis->words.reserve(expectedWords + expectedWords / 8);
    analysis->wordsEnd.reserve(lines.count());
    WordCollector collector(text, lines, *analysis);
    analysis->linter->forward(&collector);
    LineReader reader(text, stop);
    analysis->linter->read(reader);
    analysis->linter->forward(nullptr);
    collector.settleLine();
    if (analysis->words.capacity() > analysis->words.size() + analysis->words.size() / 4)
        analysis->words.shrink_to_fit();
    for (std::size_t i = 0; i < analysis->words.size(); ++i)
        if (analysis->words[i].role == WordRole::TableName && analysis->words[i].directive == 0)
            analysis->tables.emplace(analysis->text(analysis->words[i]), static_cast<std::uint32_t>(i));
    analysis->problems = locate(analysis->linter->takeDiagnostics(), text, lines, analysis->words);
    // Every line was read, up to one too long for the reader.
    std::size_t linesRead = lines.count();
    for (const Problem& problem : analysis->problems)
        if (problem.diagnostic.rule == lint::RuleId::LongLine)
            linesRead = static_cast<std::size_t>(problem.diagnostic.position.line - 1);
    analysis->wordsEnd.resize(linesRead);
    for (const KeywordDef* keyword : analysis->definitions().keywords)
        analysis->keywords.emplace(keyword->name.view(), keyword);
    if (!aliasesPath.empty()) analysis->aliases = readAliases(aliasesPath, analysis->definitions());
    return analysis;
}

}  // namespace quillet::lsp
