#include "model/text_registry.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace quillet {

namespace {

constexpr std::size_t kInitialSlots = 16;  // a power of two

std::uint32_t hashOf(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
}

}  // namespace

std::size_t TextRegistry::probe(std::string_view text, std::uint32_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t index = hash & mask;; index = (index + 1) & mask) {
        const Slot& slot = slots_[index];
        if (!slot.used || (slot.hash == hash && slot.text.view() == text)) return index;
    }
}

bool TextRegistry::contains(std::string_view text) const {
    if (slots_.empty()) return false;
    return slots_[probe(text, hashOf(text))].used;
}

bool TextRegistry::insert(Text text) {
    // Kept at most half full, so probes stay short and always end.
    if (2 * (size_ + 1) > slots_.size()) rehash(std::max(kInitialSlots, 2 * slots_.size()));
    const std::uint32_t hash = hashOf(text);
    Slot& slot = slots_[probe(text, hash)];
    if (slot.used) return false;
    slot = Slot{text, hash, true};
    ++size_;
    return true;
}

void TextRegistry::reserve(std::size_t count) {
    const std::size_t wanted = std::bit_ceil(std::max(kInitialSlots, 2 * count));
    if (wanted > slots_.size()) rehash(wanted);
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
}

void TextRegistry::rehash(std::size_t slotCount) {
    std::vector<Slot> old(slotCount);
    old.swap(slots_);
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (!slot.used) continue;
        std::size_t index = slot.hash & mask;
        while (slots_[index].used) index = (index + 1) & mask;
        slots_[index] = slot;
    }
}

}  // namespace quillet
