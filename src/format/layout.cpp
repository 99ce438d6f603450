#include "format/layout.h"

#include <algorithm>

#include "reader/line_reader.h"

namespace quillet::format {

namespace {

constexpr std::size_t kGap = 2;  // between aligned columns, and before an end-of-line comment

std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

}  // namespace

void Layout::blank(int number) { held_.push_back({.kind = Kind::Blank, .number = number}); }

void Layout::comment(int number, std::string_view source, std::string_view text) {
    held_.push_back({.kind = Kind::Comment, .number = number, .source = source, .comment = text});
}

void Layout::words(const WordLine& line, const LinePlace& place, const void* table) {
    if (place.lookupEntry) {
        // Held words are entries' (each has one at least): of another table, they are done.
        if (!words_.empty() && table != table_) flush(place.indent, false);
        table_ = table;
        held_.push_back({.kind = Kind::Entry, .number = line.number, .indent = place.indent, .source = line.source,
                         .comment = line.comment, .firstWord = words_.size(), .wordCount = line.words.size()});
        words_.insert(words_.end(), line.words.begin(), line.words.end());
        return;
    }
    flush(place.indent, place.opensBlock);
    const std::size_t start = beginLine(line.number, place.indent);
    appendWords(line.words);
    appendComment(line.comment);
    endLine(start, line.source);
}

void Layout::finish() { flush(0, false); }

// Writes what was held before a line with this indentation, and the blank
// line that a KEYWORD: or LOOKUP: has above it and the comments directly
// above it.
void Layout::flush(int nextIndent, bool nextOpensBlock) {
    std::size_t attached = held_.size();
    if (nextOpensBlock)
        while (attached > 0 && held_[attached - 1].kind == Kind::Comment) --attached;
    int indent = nextIndent;
    for (auto held = held_.rbegin(); held != held_.rend(); ++held) {
        if (held->kind == Kind::Entry) indent = held->indent;
        if (held->kind == Kind::Comment) held->indent = indent;
    }
    const bool aligned = alignEntries();
    // Blank lines stay, as one, only above a comment. A blank line written
    // where one was keeps its origin.
    int blankAbove = 0;
    for (std::size_t i = 0; i < held_.size(); ++i) {
        const Held& held = held_[i];
        switch (held.kind) {
        case Kind::Blank: blankAbove = held.number; continue;
        case Kind::Comment: {
            if (blankAbove > 0 || i == attached) separate(blankAbove);
            const std::size_t start = beginLine(held.number, held.indent);
            out_ += held.comment;
            endLine(start, held.source);
            break;
        }
        case Kind::Entry: writeEntry(held, aligned); break;
        }
        blankAbove = 0;
    }
    if (nextOpensBlock && attached == held_.size()) separate(blankAbove);
    held_.clear();
    words_.clear();
}

// The width of each column but the last of every entry; false when the
// aligned table would have a line too long for quillet, and keeps single
// spaces.
bool Layout::alignEntries() {
    widths_.clear();
    for (const Held& held : held_) {
        if (held.kind != Kind::Entry) continue;
        if (widths_.size() + 1 < held.wordCount) widths_.resize(held.wordCount - 1, 0);
        for (std::size_t j = 0; j + 1 < held.wordCount; ++j)
            widths_[j] = std::max(widths_[j], words_[held.firstWord + j].size());
    }
    for (const Held& held : held_) {
        if (held.kind != Kind::Entry) continue;
        std::size_t length = static_cast<std::size_t>(held.indent) + words_[held.firstWord + held.wordCount - 1].size();
        for (std::size_t j = 0; j + 1 < held.wordCount; ++j) length += widths_[j] + kGap;
        if (!held.comment.empty()) length += kGap + held.comment.size();
        if (length > LineReader::kMaxLine) return false;
    }
    return true;
}

void Layout::writeEntry(const Held& entry, bool aligned) {
    const std::size_t start = beginLine(entry.number, entry.indent);
    for (std::size_t j = 0; j < entry.wordCount; ++j) {
        const std::string_view word = words_[entry.firstWord + j];
        out_ += word;
        if (j + 1 < entry.wordCount) out_.append(aligned ? widths_[j] - word.size() + kGap : 1, ' ');
    }
    appendComment(entry.comment);
    endLine(start, entry.source);
}

// One blank line, never at the start of the file.
void Layout::separate(int origin) {
    if (out_.empty()) return;
    out_ += '\n';
    if (origins_ != nullptr) origins_->push_back(origin);
}

std::size_t Layout::beginLine(int number, int indent) {
    if (origins_ != nullptr) origins_->push_back(number);
    const std::size_t start = out_.size();
    out_.append(static_cast<std::size_t>(indent), ' ');
    return start;
}

// Words one blank apart, as on a line already in the layout, go out in one
// piece.
void Layout::appendWords(const std::vector<std::string_view>& words) {
    bool oneBlankApart = true;
    for (std::size_t i = 1; i < words.size() && oneBlankApart; ++i)
        oneBlankApart = words[i].data() == words[i - 1].data() + words[i - 1].size() + 1 && words[i].data()[-1] == ' ';
    if (oneBlankApart) {
        out_.append(words.front().data(), static_cast<std::size_t>(words.back().data() + words.back().size() -
                                                                   words.front().data()));
        return;
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) out_ += ' ';
        out_ += words[i];
    }
}

void Layout::appendComment(std::string_view comment) {
    if (comment.empty()) return;
    out_.append(kGap, ' ');
    out_ += comment;
}

// A line that the layout would make longer than quillet reads is kept as it
// was written, without its trailing blanks.
void Layout::endLine(std::size_t start, std::string_view source) {
    if (out_.size() - start > LineReader::kMaxLine) {
        out_.resize(start);
        out_ += withoutTrailingBlanks(source);
    }
    out_ += '\n';
}

}  // namespace quillet::format
