#include "lsp/analysis.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "lsp/reading.h"
#include "reader/line_reader.h"

namespace quillet::lsp {

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

KeywordReading Analysis::recordsAt(const Word& word) const {
    auto next = keywordStartAt(keywordStarts, word.offset + 1);
    if (next == keywordStarts.begin()) return {};
    const KeywordStart& keyword = *std::prev(next);
    // The first keyword takes over an option opened before any keyword: it
    // is read with what comes before it.
    const DocumentText& text = snapshot->text;
    const bool first = std::prev(next) == keywordStarts.begin();
    const std::size_t start = first ? 0 : text.lineStart(keyword.offset);
    const std::size_t end = next == keywordStarts.end() ? text.size() : next->offset;
    if (!first && start == 0) return {};
    PartReading part =
        readPart(text.copy(start, end - start), {}, *this, first ? 1 : static_cast<int>(keyword.line), true);
    KeywordReading records{part.linter, nullptr, nullptr};
    const std::vector<KeywordDef*>& read = part.linter->definitions().keywords;
    if (read.empty()) return records;
    records.keyword = read.back();
    // The option is the one named last before the word, within its keyword.
    for (auto at = words.begin() + (&word - words.data()) + 1; at != words.begin();) {
        --at;
        if (at->directive != 0 && at->spec()->directive == Directive::KEYWORD) break;
        if (at->role != WordRole::OptionName || at->directive != 0) continue;
        const std::string name = this->text(*at);
        const auto& options = records.keyword->options;
        const auto named = std::find_if(options.begin(), options.end(),
                                        [&name](const OptionDef* option) { return option->name == name; });
        if (named != options.end()) records.option = *named;
        break;
    }
    return records;
}

std::shared_ptr<const Analysis> analyse(std::shared_ptr<const Snapshot> snapshot, std::uint64_t generation,
                                        const std::string& aliasesPath, std::size_t expectedWords,
                                        const std::atomic<bool>* stop) {
    auto analysis = std::make_shared<Analysis>();
    analysis->snapshot = std::move(snapshot);
    analysis->generation = generation;
    const DocumentText& text = analysis->snapshot->text;
    auto linter = std::make_shared<lint::DefinitionLinter>(std::numeric_limits<std::size_t>::max());
    // Without a carriage return the protocol's lines are the reader's: the
    // snapshot's index serves both, instead of a second one as large.
    const ReaderLines lines = text.contains('\r') ? ReaderLines(text, analysis->snapshot->lines.lines())
                                                  : ReaderLines(text, analysis->snapshot->lines);
    // Room for a word per eight bytes, as a first reading has no count to go
    // by: a word index grown by copying would hold twice its size at once.
    // Only the part the words fill is ever touched.
    analysis->words.reserve(std::max(expectedWords + expectedWords / 8, text.size() / 8));
    analysis->wordsEnd.reserve(lines.count());
    WordCollector collector(text, lines, analysis->words, analysis->wordsEnd, analysis->keywordStarts);
    linter->leaveOutDescriptions();
    linter->forward(&collector);
    std::vector<std::string_view> pieces;
    pieces.reserve(text.pieceCount());
    for (std::size_t index = 0; index < text.pieceCount(); ++index) pieces.push_back(text.piece(index).text);
    LineReader reader(std::move(pieces), stop);
    linter->read(reader);
    linter->forward(nullptr);
    collector.settleLine();
    for (std::size_t i = 0; i < analysis->words.size(); ++i)
        if (analysis->words[i].role == WordRole::TableName && analysis->words[i].directive == 0)
            analysis->tables.emplace(analysis->text(analysis->words[i]), static_cast<std::uint32_t>(i));
    analysis->problems = locate(linter->takeDiagnostics(), text, analysis->words,
                                [&lines](Position position) { return lines.offset(position); });
    // Every line was read, up to one too long for the reader.
    std::size_t linesRead = lines.count();
    for (const Problem& problem : analysis->problems)
        if (problem.diagnostic.rule == lint::RuleId::LongLine)
            linesRead = static_cast<std::size_t>(problem.diagnostic.position.line - 1);
    analysis->wordsEnd.resize(linesRead);
    for (const KeywordDef* keyword : linter->definitions().keywords)
        analysis->keywords.emplace(keyword->name.view(), linter.get());
    analysis->names = std::make_shared<const lint::TakenNames>(linter->takeNames());
    // A hover reads its keyword again: the records would be a third of the
    // server's memory.
    linter->forgetKeywords();
    analysis->linter = std::move(linter);
    if (!aliasesPath.empty()) analysis->aliases = readAliases(aliasesPath, analysis->keywords);
    return analysis;
}

}  // namespace quillet::lsp
