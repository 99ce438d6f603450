#include "lsp/reading.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <unordered_set>

#include "reader/line_reader.h"

namespace quillet::lsp {

namespace {

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

// A word lies on one line, and so in one piece.
std::size_t sourceLength(const DocumentText& text, std::size_t offset, std::size_t size) {
    const DocumentText::Piece piece = text.pieceAt(offset);
    return sourceLength(piece.text, offset - piece.offset, size);
}

bool isIndexed(WordRole role) {
    return role != WordRole::Text && role != WordRole::Unused && role != WordRole::Extra;
}

// From a position up to the next blank or line end, at least one byte.
std::size_t runLength(const DocumentText& document, std::size_t offset) {
    const std::string_view text = document.restOfLine(offset);
    const std::size_t end = std::min(text.find_first_of(" \t\r"), text.size());
    return std::max<std::size_t>(end, 1);
}

}  // namespace

ReaderLines::ReaderLines(const DocumentText& text, std::size_t lineCount, int firstLine)
    : size_(text.size()), firstLine_(firstLine) {
    owned_.reserve(lineCount + 1);
    owned_.push_back(0);
    for (std::size_t index = 0; index < text.pieceCount(); ++index) {
        const DocumentText::Piece piece = text.piece(index);
        const char* data = piece.text.data();
        for (const char *at = data, *end = at + piece.text.size();
             (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)))) != nullptr;)
            owned_.push_back(static_cast<std::uint32_t>(piece.offset + static_cast<std::size_t>(++at - data)));
    }
}

ReaderLines::ReaderLines(const DocumentText& text, const LineIndex& index)
    : size_(text.size()), firstLine_(1), starts_(&index.starts()) {}

std::size_t ReaderLines::offset(Position position) const {
    if (position.line < firstLine_) return 0;
    const std::size_t line = index(position.line);
    if (line >= starts_->size()) return size_;
    return std::min((*starts_)[line] + static_cast<std::size_t>(std::max(position.column, 1) - 1), size_);
}

void WordCollector::word(const WordEvent& event) {
    const std::size_t offset = lines_.offset(event.position);
    const std::size_t line = lines_.index(event.position.line) + 1;
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
    if (event.directive != nullptr && event.directive->directive == Directive::KEYWORD &&
        (keywordStarts_.empty() || keywordStarts_.back().offset != word.offset))
        keywordStarts_.push_back({word.offset, static_cast<std::uint32_t>(event.position.line)});
}

void WordCollector::settleLine() {
    if (last_.line == 0) return;
    if (wordsEnd_.size() < last_.line) wordsEnd_.resize(last_.line);
    const std::size_t end = static_cast<std::size_t>(last_.column - 1) + sourceLength(text_, last_.offset, last_.size);
    wordsEnd_[last_.line - 1] = static_cast<std::uint8_t>(std::min<std::size_t>(end, 255));
}

Span spanAt(const DocumentText& text, const WordIndex& words, std::size_t offset) {
    const auto found = std::lower_bound(words.begin(), words.end(), offset,
                                        [](const Word& word, std::size_t at) { return word.offset < at; });
    if (found != words.end() && found->offset == offset) return {offset, found->length};
    return {offset, runLength(text, offset)};
}

std::size_t lineFeeds(std::string_view text) { return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')); }

std::vector<KeywordStart>::const_iterator keywordStartAt(const std::vector<KeywordStart>& starts, std::size_t offset) {
    return std::lower_bound(starts.begin(), starts.end(), offset,
                            [](const KeywordStart& start, std::size_t at) { return start.offset < at; });
}

PartReading readPart(std::string_view lines, const std::string& nextLine, const Analysis& earlier, int firstLine,
                     bool descriptions) {
    PartReading part;
    if (!descriptions) part.linter->leaveOutDescriptions();
    part.text.reserve(lines.size() + nextLine.size());
    part.text.append(lines).append(nextLine);
    const DocumentText text = DocumentText::over(part.text);
    const ReaderLines readerLines(text, lineFeeds(part.text), firstLine);
    WordCollector collector(text, readerLines, part.words, part.wordsEnd, part.keywordStarts);
    part.linter->forward(&collector);
    LineReader reader(part.text);
    part.linter->readPart(reader, *earlier.names, earlier.definitions(), firstLine, nextLine.empty());
    part.linter->forward(nullptr);
    collector.settleLine();
    part.diagnostics = part.linter->takeDiagnostics();
    return part;
}

// Made in place: its uses view its text, which a move of a short string
// would leave behind.
std::unique_ptr<const AliasesFile> readAliases(const std::string& path, const Analysis::KeywordsByName& keywords) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return nullptr;
    auto file = std::make_unique<AliasesFile>();
    file->path = path;
    file->text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    file->document = DocumentText::over(file->text);
    file->lines = LineIndex(file->document);
    std::unordered_set<std::string> names;
    for (const auto& [name, keyword] : keywords) names.emplace(name);
    const ReaderLines lines(file->document, file->lines.lines());
    file->problems = locate(lint::checkAliases(file->text, std::move(names), &file->uses), file->document, {},
                            [&lines](Position position) { return lines.offset(position); });
    return file;
}

}  // namespace quillet::lsp
