#pragma once

#include <cstddef>
#include <cstdint>
#include <compare>
#include <cstring>
#include <algorithm>
#include <string_view>
#include <vector>

#include "model/large_block.h"

namespace quillet {

// A text of the definition, kept once in a TextArena: one pointer to a
// four-byte length, the bytes and a NUL (so data() can be printed with %s).
// A million records hold several texts each; this keeps each to 8 bytes and
// makes freeing the model one release of the arena's blocks.
class Text {
public:
    constexpr Text() = default;

    std::size_t size() const {
        const auto* b = reinterpret_cast<const unsigned char*>(bytes_);
        return std::size_t{b[0]} | std::size_t{b[1]} << 8 | std::size_t{b[2]} << 16 | std::size_t{b[3]} << 24;
    }
    const char* data() const { return bytes_ + 4; }
    bool empty() const { return size() == 0; }
    std::string_view view() const { return {data(), size()}; }
    operator std::string_view() const { return view(); }

    friend bool operator==(const Text& a, const Text& b) { return a.view() == b.view(); }
    friend bool operator==(const Text& a, std::string_view b) { return a.view() == b; }
    friend auto operator<=>(const Text& a, const Text& b) { return a.view() <=> b.view(); }

private:
    friend class TextArena;
    explicit constexpr Text(const char* bytes) : bytes_(bytes) {}

    static constexpr char kEmpty[5] = {};
    const char* bytes_ = kEmpty;
};

// Writes the text to a stream or any output that takes a string_view.
template <typename Output>
Output& operator<<(Output& out, const Text& text) {
    out << text.view();
    return out;
}

// Owns the bytes of every Text it made, in large blocks released together.
class TextArena {
public:
    TextArena() = default;
    TextArena(const TextArena&) = delete;
    TextArena& operator=(const TextArena&) = delete;

    // Texts are words or accumulated descriptions, far below 4 GiB.
    Text keep(std::string_view text) {
        if (text.empty()) return Text();
        const std::size_t need = text.size() + 5;
        if (need > left_) newBlock(need);
        char* at = next_;
        const auto size = static_cast<std::uint32_t>(text.size());
        at[0] = static_cast<char>(size & 0xff);
        at[1] = static_cast<char>(size >> 8 & 0xff);
        at[2] = static_cast<char>(size >> 16 & 0xff);
        at[3] = static_cast<char>(size >> 24 & 0xff);
        std::memcpy(at + 4, text.data(), text.size());
        at[4 + text.size()] = '\0';
        next_ += need;
        left_ -= need;
        return Text(at);
    }

private:
    void newBlock(std::size_t need) {
        // Small at first, so that a small definition stays small.
        blockSize_ = std::min<std::size_t>(blockSize_ * 2, std::size_t{4} << 20);
        const std::size_t size = std::max(blockSize_, need);
        blocks_.emplace_back(size);
        next_ = static_cast<char*>(blocks_.back().data());
        left_ = size;
    }

    std::vector<LargeBlock> blocks_;
    std::size_t blockSize_ = 2048;
    char* next_ = nullptr;
    std::size_t left_ = 0;
};

}  // namespace quillet
