#include "lsp/text_position.h"

#include <algorithm>
#include <cstring>

namespace quillet::lsp {

namespace {

bool continuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// The bytes of the well-formed UTF-8 sequence at `at`, or of its longest
// well-formed start (at least one byte), which decodes to one U+FFFD.
std::size_t sequenceLength(std::string_view text, std::size_t at, bool& wellFormed) {
    const auto lead = static_cast<unsigned char>(text[at]);
    wellFormed = true;
    if (lead < 0x80) return 1;
    std::size_t need = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        need = 1;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        need = 2;
        if (lead == 0xE0) low = 0xA0;   // no overlong forms
        if (lead == 0xED) high = 0x9F;  // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        need = 3;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;  // nothing above U+10FFFF
    } else {
        wellFormed = false;
        return 1;
    }
    std::size_t length = 1;
    for (; length <= need && at + length < text.size(); ++length) {
        const auto byte = static_cast<unsigned char>(text[at + length]);
        if (length == 1 ? (byte < low || byte > high) : !continuation(byte)) break;
    }
    wellFormed = length == need + 1;
    return length;
}

}  // namespace

Character characterAt(std::string_view text, std::size_t at, Encoding encoding) {
    if (encoding == Encoding::Utf8) return {1, 1, true};
    bool wellFormed = false;
    const std::size_t bytes = sequenceLength(text, at, wellFormed);
    // Only characters beyond the basic plane take two UTF-16 units.
    const std::uint32_t units = encoding == Encoding::Utf16 && wellFormed && bytes == 4 ? 2 : 1;
    return {bytes, units, wellFormed};
}

std::string toValidUtf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character c = characterAt(text, at, Encoding::Utf32);
        if (c.wellFormed) valid.append(text.substr(at, c.bytes));
        else valid.append("\xEF\xBF\xBD");
        at += c.bytes;
    }
    return valid;
}

bool wellFormedUtf8(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    for (std::size_t at = 0; at < text.size();) {
        // Runs of ASCII, eight bytes at a time.
        std::uint64_t eight = kHighBits;
        if (at + 8 <= text.size()) std::memcpy(&eight, text.data() + at, 8);
        if ((eight & kHighBits) == 0) {
            at += 8;
            continue;
        }
        const Character c = characterAt(text, at, Encoding::Utf32);
        if (!c.wellFormed) return false;
        at += c.bytes;
    }
    return true;
}

LineIndex::LineIndex(const DocumentText& text) {
    starts_.push_back(0);
    // A piece ends at a line feed, or is the last: a line end never spans two.
    for (std::size_t index = 0; index < text.pieceCount(); ++index) {
        const DocumentText::Piece piece = text.piece(index);
        const char* data = piece.text.data();
        const std::size_t size = piece.text.size();
        const bool last = piece.offset + size == text.size();
        for (std::size_t at = 0; at < size;) {
            const void* found = std::memchr(data + at, '\n', size - at);
            const std::size_t newline = found ? static_cast<const char*>(found) - data : size;
            // A carriage return ends a line too, unless a line feed follows it.
            for (std::size_t from = at; from < newline;) {
                const void* cr = std::memchr(data + from, '\r', newline - from);
                if (cr == nullptr) break;
                from = static_cast<std::size_t>(static_cast<const char*>(cr) - data) + 1;
                if (from != newline || (newline == size && last))
                    starts_.push_back(static_cast<std::uint32_t>(piece.offset + from));
            }
            if (newline == size) break;
            at = newline + 1;
            starts_.push_back(static_cast<std::uint32_t>(piece.offset + at));
        }
    }
}

LineIndex::LineIndex(const LineIndex& before, const DocumentText& text, std::size_t start, std::size_t removed,
                     std::size_t inserted) {
    const auto& old = before.starts_;
    // From the last line starting before the edit (an inserted line feed may
    // join a carriage return before it) to the first starting after it.
    const auto first = std::lower_bound(old.begin() + 1, old.end(), start) - 1;
    const auto after = std::upper_bound(first, old.end(), start + removed);
    // Room for a typed line or a short paste without growing.
    starts_.reserve(old.size() + 64);
    starts_.assign(old.begin(), first + 1);
    const std::size_t end = after == old.end() ? text.size() : *after + inserted - removed - 1;
    for (std::size_t at = *first; at < end;) {
        const DocumentText::Piece piece = text.pieceAt(at);
        const std::string_view bytes = piece.text;
        for (std::size_t local = at - piece.offset; local < bytes.size() && at < end; ++local, ++at) {
            const bool lineFeed = bytes[local] == '\n';
            const bool loneReturn = bytes[local] == '\r' && (local + 1 == bytes.size() || bytes[local + 1] != '\n');
            if (lineFeed || loneReturn) starts_.push_back(static_cast<std::uint32_t>(at + 1));
        }
    }
    for (auto kept = after; kept != old.end(); ++kept)
        starts_.push_back(static_cast<std::uint32_t>(*kept + inserted - removed));
}

std::size_t LineIndex::lineEnd(const DocumentText& text, std::size_t line) const {
    return lineEnd(text.pieceAt(starts_[line]), text.size(), line);
}

// A line and its line end lie in one piece.
std::size_t LineIndex::lineEnd(const DocumentText::Piece& piece, std::size_t size, std::size_t line) const {
    std::size_t end = line + 1 < starts_.size() ? starts_[line + 1] : size;
    const auto byteBefore = [&piece, &end] {
        return end - 1 >= piece.offset && end - 1 - piece.offset < piece.text.size() ? piece.text[end - 1 - piece.offset]
                                                                                       : '\0';
    };
    if (end > starts_[line] && line + 1 < starts_.size() && byteBefore() == '\n') --end;
    if (end > starts_[line] && line + 1 < starts_.size() && byteBefore() == '\r') --end;
    return end;
}

TextPosition LineIndex::position(const DocumentText& text, std::size_t offset, Encoding encoding) const {
    offset = std::min(offset, text.size());
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const auto line = static_cast<std::size_t>(after - starts_.begin()) - 1;
    const DocumentText::Piece piece = text.pieceAt(starts_[line]);
    const std::size_t end = std::min(offset, lineEnd(piece, text.size(), line));
    std::uint32_t units = 0;
    for (std::size_t at = starts_[line]; at < end;) {
        const Character c = characterAt(piece.text, at - piece.offset, encoding);
        at += c.bytes;
        // An offset inside a character counts from the character's start.
        if (at > end) break;
        units += c.units;
    }
    return {static_cast<std::uint32_t>(line), units};
}

std::size_t LineIndex::offset(const DocumentText& text, TextPosition position, Encoding encoding) const {
    if (position.line >= starts_.size()) return text.size();
    std::size_t at = starts_[position.line];
    const DocumentText::Piece piece = text.pieceAt(at);
    const std::size_t end = lineEnd(piece, text.size(), position.line);
    for (std::uint32_t units = 0; at < end;) {
        const Character c = characterAt(piece.text, at - piece.offset, encoding);
        if (units + c.units > position.character) break;
        units += c.units;
        at += c.bytes;
    }
    return std::min(at, end);
}

}  // namespace quillet::lsp
