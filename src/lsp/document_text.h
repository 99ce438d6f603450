#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::lsp {

// A document's bytes, held in pieces of whole lines. A version made by an
// edit shares every piece the edit leaves alone with the version before it:
// a keystroke in a large document copies some kilobytes, not the document,
// and the versions a change keeps alive at once (the one being checked, the
// one requests read, the newest) cost little more than one.
//
// Every piece but the last ends with a line feed, so a line, and any word
// or character on it, lies in one piece.
class DocumentText {
public:
    struct Piece {
        std::size_t offset = 0;  // of its first byte in the document
        std::string_view text;
    };

    DocumentText() = default;
    // A copy of `text`.
    explicit DocumentText(std::string_view text);
    // `before` with `removed` bytes at `start` replaced by `inserted`.
    DocumentText(const DocumentText& before, std::size_t start, std::size_t removed, std::string_view inserted);
    // `text` itself as one piece, for a text that outlives the view: a part
    // of a document read alone, or a file read whole.
    static DocumentText over(std::string_view text);

    std::size_t size() const { return size_; }
    std::size_t pieceCount() const { return pieces_.size(); }
    Piece piece(std::size_t index) const { return {offsets_[index], view(pieces_[index])}; }
    // The piece holding `offset`; the last one for the document's end.
    Piece pieceAt(std::size_t offset) const;

    char operator[](std::size_t offset) const;
    // Bytes within one piece, as those of a line are; cut at its end.
    std::string_view view(std::size_t offset, std::size_t length) const;
    // From `offset` up to the next line feed or the end.
    std::string_view restOfLine(std::size_t offset) const;
    // Where the line holding `offset` starts.
    std::size_t lineStart(std::size_t offset) const;
    bool contains(char byte) const;
    // Bytes across any number of pieces.
    std::string copy(std::size_t offset, std::size_t length) const;
    std::string copy() const { return copy(0, size_); }

    // The bytes this text and `other` begin with alike, and, of what is left
    // past `prefix` in each, the bytes they end with alike. Pieces the two
    // share are not read.
    std::size_t commonPrefix(const DocumentText& other) const;
    std::size_t commonSuffix(const DocumentText& other, std::size_t prefix) const;

private:
    struct Stored {
        std::shared_ptr<const char[]> data;  // null owner for a view
        std::size_t size = 0;
    };
    static std::string_view view(const Stored& piece) { return {piece.data.get(), piece.size}; }
    std::size_t indexAt(std::size_t offset) const;
    // Appends `text` in pieces that end at line feeds.
    void append(std::string_view text);
    void appendPiece(Stored piece);
    void indexBlocks();

    std::vector<Stored> pieces_;
    std::vector<std::size_t> offsets_;
    // For each block of bytes of a piece's usual size, the piece holding
    // its first byte: finding a piece is a search among a few, as every
    // request and answer finds one per word or position.
    std::vector<std::uint32_t> blocks_;
    std::size_t size_ = 0;
};

}  // namespace quillet::lsp
