#include "lsp/document_text.h"

#include <algorithm>
#include <cstring>

namespace quillet::lsp {

namespace {

// Large enough that a large document has a few thousand pieces, small
// enough that copying one is nothing next to checking the edit.
constexpr std::size_t kPieceBytes = std::size_t{64} << 10;
constexpr unsigned kBlockShift = 16;

std::size_t sameFromStart(const char* a, const char* b, std::size_t size) {
    constexpr std::size_t kBlock = 4096;
    std::size_t at = 0;
    while (at + kBlock <= size && std::memcmp(a + at, b + at, kBlock) == 0) at += kBlock;
    while (at < size && a[at] == b[at]) ++at;
    return at;
}

// Of the `size` bytes before `aEnd` and `bEnd`, how many end them alike.
std::size_t sameToEnd(const char* aEnd, const char* bEnd, std::size_t size) {
    constexpr std::size_t kBlock = 4096;
    std::size_t taken = 0;
    while (taken + kBlock <= size && std::memcmp(aEnd - taken - kBlock, bEnd - taken - kBlock, kBlock) == 0)
        taken += kBlock;
    while (taken < size && aEnd[-1 - static_cast<std::ptrdiff_t>(taken)] == bEnd[-1 - static_cast<std::ptrdiff_t>(taken)])
        ++taken;
    return taken;
}

}  // namespace

DocumentText::DocumentText(std::string_view text) {
    append(text);
    indexBlocks();
}

DocumentText::DocumentText(const DocumentText& before, std::size_t start, std::size_t removed,
                           std::string_view inserted) {
    start = std::min(start, before.size_);
    removed = std::min(removed, before.size_ - start);
    if (before.pieces_.empty()) {
        append(inserted);
        indexBlocks();
        return;
    }
    // The pieces the edit touches are made again, whole lines from the
    // first one's start to the last one's end; the rest are shared.
    const std::size_t first = before.indexAt(start);
    const std::size_t last = before.indexAt(start + removed);
    pieces_.reserve(before.pieces_.size() + 2);
    offsets_.reserve(before.pieces_.size() + 2);
    for (std::size_t i = 0; i < first; ++i) appendPiece(before.pieces_[i]);
    const Piece head = before.piece(first);
    const Piece tail = before.piece(last);
    std::string edited;
    edited.reserve(start - head.offset + inserted.size() + tail.offset + tail.text.size() - start - removed);
    edited.append(head.text.substr(0, start - head.offset))
        .append(inserted)
        .append(tail.text.substr(start + removed - tail.offset));
    append(edited);
    for (std::size_t i = last + 1; i < before.pieces_.size(); ++i) appendPiece(before.pieces_[i]);
    indexBlocks();
}

DocumentText DocumentText::over(std::string_view text) {
    DocumentText viewed;
    // No owner: the text outlives the view.
    if (!text.empty()) viewed.appendPiece({std::shared_ptr<const char[]>(std::shared_ptr<const char[]>(), text.data()), text.size()});
    viewed.indexBlocks();
    return viewed;
}

void DocumentText::append(std::string_view text) {
    while (!text.empty()) {
        std::size_t cut = text.size();
        if (cut > kPieceBytes) {
            // A line longer than a piece makes a piece of its own.
            std::size_t feed = text.rfind('\n', kPieceBytes - 1);
            if (feed == std::string_view::npos) feed = text.find('\n', kPieceBytes);
            if (feed != std::string_view::npos) cut = feed + 1;
        }
        auto data = std::make_shared_for_overwrite<char[]>(cut);
        std::memcpy(data.get(), text.data(), cut);
        appendPiece({std::move(data), cut});
        text.remove_prefix(cut);
    }
}

void DocumentText::appendPiece(Stored piece) {
    offsets_.push_back(size_);
    size_ += piece.size;
    pieces_.push_back(std::move(piece));
}

void DocumentText::indexBlocks() {
    blocks_.assign((size_ >> kBlockShift) + 1, 0);
    std::size_t index = 0;
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
        while (index + 1 < offsets_.size() && offsets_[index + 1] <= block << kBlockShift) ++index;
        blocks_[block] = static_cast<std::uint32_t>(index);
    }
}

std::size_t DocumentText::indexAt(std::size_t offset) const {
    if (offsets_.empty()) return 0;
    // Between the pieces holding the first bytes of this block and the next.
    const std::size_t block = std::min(offset >> kBlockShift, blocks_.size() - 1);
    const auto from = offsets_.begin() + blocks_[block];
    const auto to = block + 1 < blocks_.size() ? offsets_.begin() + blocks_[block + 1] + 1 : offsets_.end();
    const auto after = std::upper_bound(from, to, offset);
    return after == offsets_.begin() ? 0 : static_cast<std::size_t>(after - offsets_.begin()) - 1;
}

DocumentText::Piece DocumentText::pieceAt(std::size_t offset) const {
    if (pieces_.empty()) return {};
    return piece(indexAt(offset));
}

char DocumentText::operator[](std::size_t offset) const {
    const Piece piece = pieceAt(offset);
    return offset >= piece.offset && offset - piece.offset < piece.text.size() ? piece.text[offset - piece.offset] : '\0';
}

std::string_view DocumentText::view(std::size_t offset, std::size_t length) const {
    const Piece piece = pieceAt(offset);
    if (offset < piece.offset || offset - piece.offset > piece.text.size()) return {};
    return piece.text.substr(offset - piece.offset, length);
}

std::string_view DocumentText::restOfLine(std::size_t offset) const {
    const std::string_view rest = view(offset, std::string_view::npos);
    return rest.substr(0, rest.find('\n'));
}

std::size_t DocumentText::lineStart(std::size_t offset) const {
    const Piece piece = pieceAt(offset);
    const std::size_t local = std::min(offset - std::min(offset, piece.offset), piece.text.size());
    // A piece starts a line.
    const std::size_t feed = local == 0 ? std::string_view::npos : piece.text.rfind('\n', local - 1);
    return feed == std::string_view::npos ? piece.offset : piece.offset + feed + 1;
}

bool DocumentText::contains(char byte) const {
    for (const Stored& piece : pieces_)
        if (view(piece).find(byte) != std::string_view::npos) return true;
    return false;
}

std::string DocumentText::copy(std::size_t offset, std::size_t length) const {
    std::string out;
    offset = std::min(offset, size_);
    length = std::min(length, size_ - offset);
    out.reserve(length);
    while (out.size() < length) {
        const std::string_view bytes = view(offset + out.size(), length - out.size());
        if (bytes.empty()) break;
        out.append(bytes);
    }
    return out;
}

std::size_t DocumentText::commonPrefix(const DocumentText& other) const {
    const std::size_t size = std::min(size_, other.size_);
    std::size_t at = 0;
    while (at < size) {
        const std::string_view mine = view(at, size - at);
        const std::string_view theirs = other.view(at, size - at);
        const std::size_t count = std::min(mine.size(), theirs.size());
        const std::size_t same = mine.data() == theirs.data() ? count : sameFromStart(mine.data(), theirs.data(), count);
        at += same;
        if (same < count) break;
    }
    return at;
}

std::size_t DocumentText::commonSuffix(const DocumentText& other, std::size_t prefix) const {
    const std::size_t limit = std::min(size_, other.size_) - std::min(prefix, std::min(size_, other.size_));
    std::size_t taken = 0;
    while (taken < limit) {
        const std::size_t mineEnd = size_ - taken;
        const std::size_t theirsEnd = other.size_ - taken;
        const Piece mine = pieceAt(mineEnd - 1);
        const Piece theirs = other.pieceAt(theirsEnd - 1);
        const char* mineStop = mine.text.data() + (mineEnd - mine.offset);
        const char* theirsStop = theirs.text.data() + (theirsEnd - theirs.offset);
        const std::size_t count = std::min({mineEnd - mine.offset, theirsEnd - theirs.offset, limit - taken});
        const std::size_t same = mineStop == theirsStop ? count : sameToEnd(mineStop, theirsStop, count);
        taken += same;
        if (same < count) break;
    }
    return taken;
}

}  // namespace quillet::lsp
