#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lsp/document_text.h"
#include "model/large_block.h"

namespace quillet::lsp {

// How the client counts the characters of a line: bytes, UTF-16 code units
// (the protocol's default) or code points.
enum class Encoding { Utf8, Utf16, Utf32 };

struct TextPosition {
    std::uint32_t line = 0;
    std::uint32_t character = 0;
};

// Where the lines of a text start, split as the protocol splits them: at a
// line feed, a carriage return and line feed, or a lone carriage return.
// Definitions are bytes, not text: an invalid UTF-8 sequence counts as one
// replacement character, as a client decoding the file shows it.
class LineIndex {
public:
    LineIndex() = default;
    explicit LineIndex(const DocumentText& text);
    // The index of `text`, made from `before`, the index of the text that an
    // edit turned into it: `removed` bytes at `start` replaced by `inserted`.
    // Only the lines the edit touches are read again.
    LineIndex(const LineIndex& before, const DocumentText& text, std::size_t start, std::size_t removed,
              std::size_t inserted);

    // Offsets fit 32 bits: the server takes no document of 4 GiB or more.
    // Copied at every change: a large one takes large pages.
    using Starts = std::vector<std::uint32_t, LargePageAllocator<std::uint32_t>>;

    bool operator==(const LineIndex&) const = default;

    std::size_t lines() const { return starts_.size(); }
    const Starts& starts() const { return starts_; }
    // The end of the line's text, before its line end.
    std::size_t lineEnd(const DocumentText& text, std::size_t line) const;

    TextPosition position(const DocumentText& text, std::size_t offset, Encoding encoding) const;
    // A position past its line's end is that end; past the last line, the
    // end of the text.
    std::size_t offset(const DocumentText& text, TextPosition position, Encoding encoding) const;

private:
    std::size_t lineEnd(const DocumentText::Piece& piece, std::size_t size, std::size_t line) const;

    Starts starts_;
};

// The bytes of the character at `at` and the code units it counts for.
struct Character {
    std::size_t bytes;
    std::uint32_t units;
    bool wellFormed;  // false: counts as one U+FFFD
};
Character characterAt(std::string_view text, std::size_t at, Encoding encoding);

// The text with each ill-formed sequence replaced by U+FFFD, as a client
// decoding it would show it.
std::string toValidUtf8(std::string_view text);
// Whether toValidUtf8() gives the text back unchanged.
bool wellFormedUtf8(std::string_view text);

}  // namespace quillet::lsp
