#include <algorithm>
#include <optional>
#include <string>

#include "lsp/analysis.h"
#include "lsp/reading.h"

namespace quillet::lsp {

namespace {

constexpr std::string_view kKeyword = "KEYWORD:";
// Keywords read alone since the last whole reading, some ten kilobytes each:
// past this many, a whole reading starts again.
constexpr std::size_t kMostParts = 1024;

// Where the line holding `offset` starts, when only blanks stand before
// `offset` on it.
std::optional<std::size_t> startOfLineLedBy(const DocumentText& text, std::size_t offset) {
    const std::size_t start = text.lineStart(offset);
    if (text.view(start, offset - start).find_first_not_of(" \t") != std::string_view::npos) return std::nullopt;
    return start;
}

bool isKeyword(const Word& word) { return word.spec() != nullptr && word.spec()->directive == Directive::KEYWORD; }

// A KEYWORD: word written as such, not a misspelling read as one: `source`
// holds the word's bytes.
bool isWrittenKeyword(const Word& word, std::string_view source) {
    return isKeyword(word) && source == kKeyword;
}

// A keyword's lines in a version: from the line of its KEYWORD: word to the
// line of the next one.
struct Lines {
    std::size_t start = 0;
    std::size_t keyword = 0;
    std::size_t end = 0;
    std::string nextLine;
    std::size_t nextKeyword() const { return end + nextLine.size() - kKeyword.size(); }
};

// The keyword of a whole reading whose lines hold `offset`, when its
// KEYWORD: word and the next one are written as such, each first on its
// line, and no option is opened before the first keyword.
std::optional<Lines> keywordAround(const Analysis& analysis, std::size_t offset) {
    const DocumentText& text = analysis.snapshot->text;
    const WordIndex& words = analysis.words;
    auto at = std::upper_bound(words.begin(), words.end(), offset,
                               [](std::size_t place, const Word& word) { return place < word.offset; });
    while (at != words.begin() && !isKeyword(*std::prev(at))) --at;
    if (at == words.begin()) return std::nullopt;
    const Word& keyword = *std::prev(at);
    // The first keyword takes over an option opened before any keyword.
    const bool first = analysis.keywordStarts.empty() || analysis.keywordStarts.front().offset >= keyword.offset;
    if (first && std::any_of(words.begin(), std::prev(at), [](const Word& word) {
            return word.spec() != nullptr && word.spec()->directive == Directive::OPTION;
        }))
        return std::nullopt;
    const std::optional<std::size_t> start = startOfLineLedBy(text, keyword.offset);
    if (!isWrittenKeyword(keyword, analysis.source(keyword)) || !start) return std::nullopt;
    Lines lines{*start, keyword.offset, text.size(), {}};
    const auto next = std::find_if(at, words.end(), isKeyword);
    if (next == words.end()) return lines;
    const std::optional<std::size_t> nextStart = startOfLineLedBy(text, next->offset);
    if (!isWrittenKeyword(*next, analysis.source(*next)) || !nextStart) return std::nullopt;
    lines.end = *nextStart;
    lines.nextLine = std::string(text.view(*nextStart, next->offset + kKeyword.size() - *nextStart));
    return lines;
}

// Whether the part's directives leave the rest of the file as it was: it
// starts with its KEYWORD: word at `keyword`, has no other but the next
// keyword's, defines no lookup table and gives no once-per-file directive.
bool keepsToItself(const PartReading& part, std::size_t keyword, bool toEnd) {
    const auto written = [&part](const Word& word) {
        return isWrittenKeyword(word, std::string_view(part.text).substr(word.offset, word.length));
    };
    if (part.words.empty() || !written(part.words.front()) || part.words.front().offset != keyword ||
        part.linter->definitions().keywords.empty())
        return false;
    std::size_t keywords = 0;
    for (const Word& word : part.words) {
        const DirectiveSpec* spec = word.spec();
        if (spec == nullptr) continue;
        if (spec->directive == Directive::LOOKUP || spec->secondUseRefusal != nullptr) return false;
        if (spec->directive == Directive::KEYWORD) ++keywords;
    }
    const bool endsWithNext = toEnd || (written(part.words.back()) &&
                                        part.words.back().offset + kKeyword.size() == part.text.size());
    return endsWithNext && keywords == (toEnd ? 1U : 2U);
}

bool sameDiagnostic(const lint::Diagnostic& a, const lint::Diagnostic& b) {
    const auto samePosition = [](Position x, Position y) { return x.line == y.line && x.column == y.column; };
    if (a.severity != b.severity || a.rule != b.rule || !samePosition(a.position, b.position) ||
        a.message != b.message || a.notes.size() != b.notes.size() || a.fixes.size() != b.fixes.size())
        return false;
    for (std::size_t i = 0; i < a.notes.size(); ++i)
        if (!samePosition(a.notes[i].position, b.notes[i].position) || a.notes[i].message != b.notes[i].message)
            return false;
    for (std::size_t i = 0; i < a.fixes.size(); ++i)
        if (!samePosition(a.fixes[i].position, b.fixes[i].position) || a.fixes[i].length != b.fixes[i].length ||
            a.fixes[i].replacement != b.fixes[i].replacement)
            return false;
    return true;
}

// The problems placed after the keyword's KEYWORD: word up to the next
// one's, which the keyword's reading gives.
std::pair<std::size_t, std::size_t> problemsOf(const std::vector<Problem>& problems, const Lines& lines) {
    const auto after = [&problems](std::size_t offset) {
        return static_cast<std::size_t>(
            std::upper_bound(problems.begin(), problems.end(), offset,
                             [](std::size_t at, const Problem& problem) { return at < problem.span.offset; }) -
            problems.begin());
    };
    return {after(lines.keyword), lines.nextLine.empty() ? problems.size() : after(lines.nextKeyword())};
}

// Whether reading the keyword alone gives back what the whole reading found
// on its lines: the test that nothing else the file holds bears on them.
bool readsAsWhole(const PartReading& part, const std::vector<Problem>& problems, const Lines& lines) {
    const auto [first, last] = problemsOf(problems, lines);
    if (last - first != part.diagnostics.size()) return false;
    for (std::size_t i = first; i < last; ++i)
        if (!sameDiagnostic(problems[i].diagnostic, part.diagnostics[i - first])) return false;
    return true;
}

// Whether a problem elsewhere points into the keyword's lines, which the
// edit may have moved.
bool pointedInto(const std::vector<Problem>& problems, std::pair<std::size_t, std::size_t> own, const Lines& lines) {
    const auto inside = [&lines](const Span& span) { return span.offset >= lines.start && span.offset < lines.end; };
    for (std::size_t i = 0; i < problems.size(); ++i) {
        if (i == own.first) i = own.second;
        if (i == problems.size()) break;
        if (std::any_of(problems[i].notes.begin(), problems[i].notes.end(), inside) ||
            std::any_of(problems[i].fixes.begin(), problems[i].fixes.end(), inside))
            return true;
    }
    return false;
}

// Moves what a problem points at after the keyword by the edit's bytes and
// lines: itself, its notes, its fixes.
void shift(Problem& problem, std::size_t from, std::ptrdiff_t bytes, int lines) {
    const auto move = [&](Span& span, Position& position) {
        if (span.offset < from) return;
        span.offset = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(span.offset) + bytes);
        position.line += lines;
    };
    move(problem.span, problem.diagnostic.position);
    for (std::size_t i = 0; i < problem.notes.size(); ++i) move(problem.notes[i], problem.diagnostic.notes[i].position);
    for (std::size_t i = 0; i < problem.fixes.size(); ++i) move(problem.fixes[i], problem.diagnostic.fixes[i].position);
}

// The byte where the file's line `line` starts.
std::size_t startOfLine(const DocumentText& text, int line) {
    if (line <= 1) return 0;
    int begun = 1;
    for (std::size_t index = 0; index < text.pieceCount(); ++index) {
        const DocumentText::Piece piece = text.piece(index);
        for (std::size_t at = 0;;) {
            const std::size_t feed = piece.text.find('\n', at);
            if (feed == std::string_view::npos) break;
            at = feed + 1;
            if (++begun == line) return piece.offset + at;
        }
    }
    return text.size();
}

// A version whose text is the previous one's (an edit and its undo).
std::shared_ptr<const Analysis> copyOf(const Analysis& previous, std::shared_ptr<const Snapshot> snapshot,
                                       std::uint64_t generation, const std::string& aliasesPath) {
    auto analysis = std::make_shared<Analysis>();
    analysis->snapshot = std::move(snapshot);
    analysis->generation = generation;
    analysis->linter = previous.linter;
    analysis->parts = previous.parts;
    analysis->names = previous.names;
    analysis->words = previous.words;
    analysis->wordsEnd = previous.wordsEnd;
    analysis->keywordStarts = previous.keywordStarts;
    analysis->tables = previous.tables;
    analysis->problems = previous.problems;
    analysis->keywords = previous.keywords;
    if (!aliasesPath.empty()) analysis->aliases = readAliases(aliasesPath, analysis->keywords);
    return analysis;
}

}  // namespace

std::shared_ptr<const Analysis> reanalyse(const Analysis& previous, std::shared_ptr<const Snapshot> snapshot,
                                          std::uint64_t generation, const std::string& aliasesPath) {
    const DocumentText& before = previous.snapshot->text;
    const DocumentText& now = snapshot->text;
    const std::size_t editStart = before.commonPrefix(now);
    if (editStart == before.size() && editStart == now.size())
        return copyOf(previous, std::move(snapshot), generation, aliasesPath);
    const std::size_t editEnd = before.size() - before.commonSuffix(now, editStart);
    // A line too long ends the reading there: the rest is the whole
    // reading's to give.
    if (std::any_of(previous.problems.begin(), previous.problems.end(), [](const Problem& problem) {
            return problem.diagnostic.rule == lint::RuleId::LongLine;
        }))
        return nullptr;

    if (previous.parts.size() >= kMostParts) return nullptr;
    std::optional<Lines> around = keywordAround(previous, editStart);
    if (!around) return nullptr;
    Lines lines = std::move(*around);
    if (editStart < lines.keyword + kKeyword.size() || editEnd > lines.end) return nullptr;
    const auto start = keywordStartAt(previous.keywordStarts, lines.keyword);
    if (start == previous.keywordStarts.end() || start->offset != lines.keyword) return nullptr;
    const auto firstLine = static_cast<int>(start->line);
    const bool toEnd = lines.nextLine.empty();
    // The keyword is read twice: past half the file, one whole reading costs less.
    if (lines.end - lines.start > before.size() / 2) return nullptr;
    const std::string partBefore = before.copy(lines.start, lines.end - lines.start);
    const std::string partNow = now.copy(lines.start, partBefore.size() + now.size() - before.size());
    // Carriage returns are counted over the whole file.
    if ((!toEnd && (partNow.empty() || partNow.back() != '\n')) || partNow.find('\r') != std::string::npos ||
        partBefore.find('\r') != std::string::npos)
        return nullptr;
    const std::size_t keywordInPart = lines.keyword - lines.start;
    const auto own = problemsOf(previous.problems, lines);
    if (pointedInto(previous.problems, own, lines)) return nullptr;

    // The keyword as it was, read alone, must give what the whole reading
    // found on its lines; as it is now, it must take the names and use the
    // tables it took and used.
    PartReading was = readPart(partBefore, lines.nextLine, previous, firstLine);
    if (!keepsToItself(was, keywordInPart, toEnd) || !readsAsWhole(was, previous.problems, lines)) return nullptr;
    PartReading part = readPart(partNow, lines.nextLine, previous, firstLine);
    // A name the keyword no longer takes was taken by no later line either:
    // that one's error would point into the keyword (see pointedInto()).
    if (!keepsToItself(part, keywordInPart, toEnd) ||
        !part.linter->reader().takesOnlyNewNames(was.linter->reader(), previous.names->keywordNames,
                                                 previous.names->ids) ||
        part.linter->usedTables() != was.linter->usedTables())
        return nullptr;
    for (const auto& [index, name] : part.linter->tablesNamedEarly())
        if (previous.definitions().findLookupTable(name) != nullptr) return nullptr;
    if (std::any_of(part.diagnostics.begin(), part.diagnostics.end(), [](const lint::Diagnostic& diagnostic) {
            return diagnostic.rule == lint::RuleId::LongLine;
        }))
        return nullptr;
    // The keyword's record is found by the name it took. The empty name
    // stands for the first keyword that took none, or took it.
    const KeywordDef* keyword = part.linter->definitions().keywords.front();
    const std::string_view name = was.linter->definitions().keywords.front()->name.view();
    const auto named = previous.keywords.find(name);
    if (was.linter->reader().keywordNames().size() != 1 || part.linter->reader().keywordNames().size() != 1 ||
        name.empty() || keyword->name.empty() || named == previous.keywords.end())
        return nullptr;
    const lint::DefinitionLinter* replaced = named->second;
    const std::ptrdiff_t bytes = static_cast<std::ptrdiff_t>(now.size()) - static_cast<std::ptrdiff_t>(before.size());
    const std::size_t partLines = lineFeeds(partNow) + (toEnd ? 1 : 0);
    const std::size_t linesBefore = lineFeeds(partBefore) + (toEnd ? 1 : 0);
    const int lineShift = static_cast<int>(partLines) - static_cast<int>(linesBefore);
    // Errors name lines in their messages: those after the keyword stay
    // right only where the edit added or removed no line.
    if (lineShift != 0 && std::any_of(previous.problems.begin() + static_cast<std::ptrdiff_t>(own.second),
                                      previous.problems.end(), [](const Problem& problem) {
                                          return problem.diagnostic.severity == lint::Severity::Error;
                                      }))
        return nullptr;

    auto analysis = std::make_shared<Analysis>();
    analysis->snapshot = std::move(snapshot);
    analysis->generation = generation;
    analysis->linter = previous.linter;

    // Words: the part's in place of the keyword's, its KEYWORD: words
    // (the first and the next keyword's) kept from the whole reading.
    const WordIndex& words = previous.words;
    const auto wordAfter = [&words](std::size_t offset) {
        return static_cast<std::size_t>(std::upper_bound(words.begin(), words.end(), offset,
                                                         [](std::size_t at, const Word& word) {
                                                             return at < word.offset;
                                                         }) -
                                        words.begin());
    };
    const std::size_t firstWord = wordAfter(lines.keyword);
    const std::size_t lastWord = toEnd ? words.size() : wordAfter(lines.nextKeyword()) - 1;
    const std::size_t partWords = part.words.size() - (toEnd ? 1 : 2);
    analysis->words.reserve(words.size() - (lastWord - firstWord) + partWords);
    analysis->words.insert(analysis->words.end(), words.begin(), words.begin() + static_cast<std::ptrdiff_t>(firstWord));
    for (std::size_t i = 1; i <= partWords; ++i) {
        Word word = part.words[i];
        word.offset += static_cast<std::uint32_t>(lines.start);
        analysis->words.push_back(word);
    }
    for (std::size_t i = lastWord; i < words.size(); ++i) {
        Word word = words[i];
        word.offset = static_cast<std::uint32_t>(static_cast<std::ptrdiff_t>(word.offset) + bytes);
        analysis->words.push_back(word);
    }
    const std::ptrdiff_t wordShift =
        static_cast<std::ptrdiff_t>(partWords) - static_cast<std::ptrdiff_t>(lastWord - firstWord);
    for (const auto& [name, index] : previous.tables)
        analysis->tables.emplace(name, index < firstWord ? index
                                                         : static_cast<std::uint32_t>(index + wordShift));

    const auto shifted = [&](KeywordStart start) {
        return KeywordStart{static_cast<std::uint32_t>(static_cast<std::ptrdiff_t>(start.offset) + bytes),
                            static_cast<std::uint32_t>(static_cast<int>(start.line) + lineShift)};
    };
    analysis->keywordStarts.assign(previous.keywordStarts.begin(), std::next(start));
    std::transform(std::next(start), previous.keywordStarts.end(), std::back_inserter(analysis->keywordStarts),
                   shifted);

    const auto lineIndex = static_cast<std::size_t>(firstLine - 1);
    analysis->wordsEnd.assign(previous.wordsEnd.begin(),
                              previous.wordsEnd.begin() + static_cast<std::ptrdiff_t>(lineIndex));
    part.wordsEnd.resize(partLines);
    analysis->wordsEnd.insert(analysis->wordsEnd.end(), part.wordsEnd.begin(), part.wordsEnd.end());
    if (lineIndex + linesBefore < previous.wordsEnd.size())
        analysis->wordsEnd.insert(analysis->wordsEnd.end(),
                                  previous.wordsEnd.begin() + static_cast<std::ptrdiff_t>(lineIndex + linesBefore),
                                  previous.wordsEnd.end());

    // Problems: the part's in place of those on the keyword's lines.
    const ReaderLines partReaderLines(DocumentText::over(part.text), lineFeeds(part.text), firstLine);
    std::vector<Problem> found =
        locate(std::move(part.diagnostics), now, analysis->words, [&](Position position) {
            if (position.line >= firstLine) return lines.start + partReaderLines.offset(position);
            return std::min(startOfLine(now, position.line) + static_cast<std::size_t>(std::max(position.column, 1) - 1),
                            now.size());
        });
    analysis->problems.reserve(previous.problems.size() - (own.second - own.first) + found.size());
    // A problem before the keyword may have a note after it (a table
    // defined further down).
    const auto keep = [&](std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i) {
            Problem problem = previous.problems[i];
            shift(problem, lines.end, bytes, lineShift);
            analysis->problems.push_back(std::move(problem));
        }
    };
    keep(0, own.first);
    std::move(found.begin(), found.end(), std::back_inserter(analysis->problems));
    keep(own.second, previous.problems.size());

    // The keyword's record, and the places of the names.
    const DefinitionReader& taken = part.linter->reader();
    const DefinitionReader& given = was.linter->reader();
    analysis->keywords = previous.keywords;
    if (lineShift == 0 && taken.keywordNames().registersAsIn(given.keywordNames()) &&
        taken.ids().registersAsIn(given.ids())) {
        // The keyword takes the names it took, where it took them (an edit
        // of a description or a value): the names and the readings holding
        // their texts stay as they are, instead of a copy of the registries
        // of the whole file.
        analysis->names = previous.names;
        analysis->parts = previous.parts;
    } else {
        const int lastLine = firstLine + static_cast<int>(linesBefore) - 1;
        analysis->names = std::make_shared<const lint::TakenNames>(lint::TakenNames{
            TextRegistry(previous.names->keywordNames, lastLine, lineShift, given.keywordNames(),
                         taken.keywordNames()),
            TextRegistry(previous.names->ids, lastLine, lineShift, given.ids(), taken.ids())});
        analysis->keywords.erase(name);
        analysis->keywords.emplace(keyword->name.view(), part.linter.get());
        for (const auto& kept : previous.parts)
            if (kept.get() != replaced) analysis->parts.push_back(kept);
        analysis->parts.push_back(std::move(part.linter));
    }
    if (!aliasesPath.empty()) analysis->aliases = readAliases(aliasesPath, analysis->keywords);
    return analysis;
}

}  // namespace quillet::lsp
