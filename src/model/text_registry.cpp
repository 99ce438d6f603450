#include "model/text_registry.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace quillet {

namespace {

constexpr std::size_t kInitialSlots = 16;  // a power of two

// Never 0, which marks a free slot.
std::uint32_t hashOf(std::string_view text) {
    const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
    return hash == 0 ? 1 : hash;
}

// Kept at most three quarters full: with the hashes packed, even the longer
// probes of that load stay within a cache line or two.
bool overFull(std::size_t count, std::size_t slots) { return 4 * count > 3 * slots; }

}  // namespace

std::size_t TextRegistry::probe(std::string_view text, std::uint32_t hash) const {
    const std::size_t mask = hashes_.size() - 1;
    for (std::size_t index = hash & mask;; index = (index + 1) & mask) {
        const std::uint32_t slot = hashes_[index];
        if (slot == 0 || (slot == hash && texts_[index].view() == text)) return index;
    }
}

bool TextRegistry::contains(std::string_view text) const {
    if (hashes_.empty()) return false;
    return hashes_[probe(text, hashOf(text))] != 0;
}

bool TextRegistry::insert(Text text) {
    if (hashes_.empty() || overFull(size_ + 1, hashes_.size())) rehash(std::max(kInitialSlots, 2 * hashes_.size()));
    const std::uint32_t hash = hashOf(text);
    const std::size_t index = probe(text, hash);
    if (hashes_[index] != 0) return false;
    hashes_[index] = hash;
    texts_[index] = text;
    ++size_;
    return true;
}

void TextRegistry::reserve(std::size_t count) {
    std::size_t wanted = std::bit_ceil(std::max(kInitialSlots, count));
    if (overFull(count, wanted)) wanted *= 2;
    if (wanted > hashes_.size()) rehash(wanted);
}

void TextRegistry::clear() {
    // Emptying a table costs its size, which the texts that filled it paid
    // for. A table far larger than what it holds (left by one keyword with
    // many options) is replaced instead, or every later keyword would pay
    // that size again.
    if (hashes_.size() > kInitialSlots && 4 * size_ < hashes_.size()) {
        std::vector<std::uint32_t>(kInitialSlots).swap(hashes_);
        std::vector<Text>(kInitialSlots).swap(texts_);
    } else {
        std::fill(hashes_.begin(), hashes_.end(), 0);
    }
    size_ = 0;
}

void TextRegistry::rehash(std::size_t slotCount) {
    std::vector<std::uint32_t> oldHashes(slotCount);
    std::vector<Text> oldTexts(slotCount);
    oldHashes.swap(hashes_);
    oldTexts.swap(texts_);
    const std::size_t mask = slotCount - 1;
    for (std::size_t old = 0; old < oldHashes.size(); ++old) {
        if (oldHashes[old] == 0) continue;
        std::size_t index = oldHashes[old] & mask;
        while (hashes_[index] != 0) index = (index + 1) & mask;
        hashes_[index] = oldHashes[old];
        texts_[index] = oldTexts[old];
    }
}

}  // namespace quillet
