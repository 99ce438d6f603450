#include "model/text_registry.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace quillet {

namespace {

constexpr std::size_t kInitialSlots = 16;  // a power of two
constexpr std::size_t kBlockSize = 64 * 1024;

std::uint32_t hashOf(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
}

}  // namespace

std::size_t TextRegistry::probe(std::string_view text, std::uint32_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t index = hash & mask;; index = (index + 1) & mask) {
        const Slot& slot = slots_[index];
        if (slot.data == nullptr) return index;
        if (slot.hash == hash && slot.length == text.size() && std::memcmp(slot.data, text.data(), text.size()) == 0)
            return index;
    }
}

bool TextRegistry::contains(std::string_view text) const {
    if (slots_.empty()) return false;
    return slots_[probe(text, hashOf(text))].data != nullptr;
}

bool TextRegistry::insert(std::string_view text) {
    // Kept at most half full, so probes stay short and always end.
    if (2 * (size_ + 1) > slots_.size()) grow();
    const std::uint32_t hash = hashOf(text);
    Slot& slot = slots_[probe(text, hash)];
    if (slot.data != nullptr) return false;
    slot = Slot{keep(text), hash, static_cast<std::uint32_t>(text.size())};
    ++size_;
    return true;
}

void TextRegistry::clear() {
    // Emptying a table costs its size, which the texts that filled it paid
    // for. A table far larger than what it holds (left by one keyword with
    // many options) is replaced instead, or every later keyword would pay
    // that size again.
    if (slots_.size() > kInitialSlots && 4 * size_ < slots_.size())
        std::vector<Slot>(kInitialSlots).swap(slots_);
    else
        std::fill(slots_.begin(), slots_.end(), Slot{});
    size_ = 0;
    if (blocks_.size() > 1) blocks_.resize(1);
    blockUsed_ = 0;
}

// Copies `text` into the current block, or a new one when it does not fit;
// an empty text still gets a non-null address, as null marks free slots.
const char* TextRegistry::keep(std::string_view text) {
    if (blocks_.empty() || blockUsed_ + text.size() + 1 > blocks_.back().size) {
        const std::size_t size = std::max(kBlockSize, text.size() + 1);
        blocks_.push_back(Block{std::unique_ptr<char[]>(new char[size]), size});
        blockUsed_ = 0;
    }
    char* copy = blocks_.back().bytes.get() + blockUsed_;
    std::memcpy(copy, text.data(), text.size());
    blockUsed_ += text.size() + 1;
    return copy;
}

void TextRegistry::grow() {
    std::vector<Slot> old(std::max(kInitialSlots, 2 * slots_.size()));
    old.swap(slots_);
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.data == nullptr) continue;
        std::size_t index = slot.hash & mask;
        while (slots_[index].data != nullptr) index = (index + 1) & mask;
        slots_[index] = slot;
    }
}

}  // namespace quillet
