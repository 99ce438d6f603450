// Byte offsets and protocol positions convert both ways for any bytes.
#include <gtest/gtest.h>

#include <random>

#include "lsp/snapshot.h"
#include "lsp/text_position.h"

namespace quillet::lsp {
namespace {

TEST(TextPosition, CountsEachEncodingsUnits) {
    // a, é (2 bytes), 😀 (4 bytes), an invalid byte, a truncated 3-byte sequence, b.
    const std::string bytes = "a\xC3\xA9\xF0\x9F\x98\x80\xFF\xE2\x82" "b\r\nx";
    const DocumentText text = DocumentText::over(bytes);
    const LineIndex lines(text);
    const struct {
        Encoding encoding;
        std::uint32_t beforeB;
    } cases[] = {{Encoding::Utf8, 10}, {Encoding::Utf16, 6}, {Encoding::Utf32, 5}};
    for (const auto& c : cases) {
        const TextPosition b = lines.position(text, 10, c.encoding);
        EXPECT_EQ(b.line, 0u);
        EXPECT_EQ(b.character, c.beforeB);
        EXPECT_EQ(lines.offset(text, b, c.encoding), 10u);
        // Past the line's end is its end, before the CR LF; past the text, its end.
        EXPECT_EQ(lines.offset(text, {0, 99}, c.encoding), 11u);
        EXPECT_EQ(lines.offset(text, {1, 0}, c.encoding), 13u);
        EXPECT_EQ(lines.offset(text, {7, 0}, c.encoding), text.size());
    }
    // Inside a character: its start.
    EXPECT_EQ(lines.offset(text, {0, 3}, Encoding::Utf16), 3u);
    EXPECT_EQ(lines.position(text, 5, Encoding::Utf16).character, 2u);
}

TEST(TextPosition, LinesEndAtLineFeedsCarriageReturnsAndBoth) {
    const DocumentText text = DocumentText::over("a\nb\r\nc\rd\r");
    const LineIndex lines(text);
    EXPECT_EQ(lines.lines(), 5u);
    for (auto [offset, line] : {std::pair{0, 0}, {2, 1}, {5, 2}, {7, 3}, {9, 4}})
        EXPECT_EQ(lines.position(text, offset, Encoding::Utf16).line, static_cast<std::uint32_t>(line)) << offset;
    EXPECT_EQ(lines.lineEnd(text, 1), 3u);
    EXPECT_EQ(lines.lineEnd(text, 2), 6u);
}

// Property: every character start survives the round trip, positions grow
// with offsets, and no offset lands beyond its line, whatever the bytes; and
// the bytes are well-formed exactly where making them so changes nothing.
TEST(TextPosition, RoundTripsOverRandomBytes) {
    std::mt19937 random(23);
    const std::string pieces[] = {"a", " ", "\n", "\r", "\r\n", "\xC3\xA9", "\xF0\x9F\x98\x80", "\xE2\x82\xAC",
                                  "\xFF", "\xC3", "\xED\xA0\x80", "\xF4\x90\x80\x80", std::string(1, '\0')};
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        for (int i = random() % 40; i > 0; --i) bytes += pieces[random() % std::size(pieces)];
        ASSERT_EQ(wellFormedUtf8(bytes), toValidUtf8(bytes) == bytes);
        const DocumentText text = DocumentText::over(bytes);
        const LineIndex lines(text);
        for (Encoding encoding : {Encoding::Utf8, Encoding::Utf16, Encoding::Utf32}) {
            TextPosition last{0, 0};
            for (std::size_t offset = 0; offset <= text.size();) {
                const TextPosition at = lines.position(text, offset, encoding);
                ASSERT_TRUE(at.line > last.line || (at.line == last.line && at.character >= last.character));
                const std::size_t back = lines.offset(text, at, encoding);
                ASSERT_LE(back, offset);
                if (offset == text.size()) break;
                // A line end's bytes map to the line's end; others come back exact.
                if (text[offset] != '\r' && text[offset] != '\n') {
                    ASSERT_EQ(back, offset);
                }
                last = at;
                offset += text[offset] == '\r' || text[offset] == '\n'
                              ? 1
                              : characterAt(bytes, offset, encoding).bytes;
            }
        }
    }
}

}  // namespace
}  // namespace quillet::lsp
