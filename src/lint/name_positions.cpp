#include "lint/name_positions.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace quillet::lint {

namespace {

constexpr std::size_t kInitialSlots = 16;  // a power of two

std::uint32_t hashOf(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(name));
}

// An empty name still needs a non-null address, as null marks free slots.
constexpr char kEmpty[1] = {};

}  // namespace

std::size_t NamePositions::probe(std::string_view name, std::uint32_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t index = hash & mask;; index = (index + 1) & mask) {
        const Slot& slot = slots_[index];
        if (slot.data == nullptr) return index;
        if (slot.hash == hash && slot.length == name.size() && std::memcmp(slot.data, name.data(), name.size()) == 0)
            return index;
    }
}

void NamePositions::add(std::string_view name, Position position) {
    // Kept at most half full, so probes stay short and always end.
    if (2 * (size_ + 1) > slots_.size()) grow();
    const std::uint32_t hash = hashOf(name);
    Slot& slot = slots_[probe(name, hash)];
    if (slot.data != nullptr) return;
    slot = Slot{name.empty() ? kEmpty : name.data(), hash, static_cast<std::uint32_t>(name.size()), position};
    ++size_;
}

std::optional<Position> NamePositions::find(std::string_view name) const {
    if (slots_.empty()) return std::nullopt;
    const Slot& slot = slots_[probe(name, hashOf(name))];
    if (slot.data == nullptr) return std::nullopt;
    return slot.position;
}

void NamePositions::clear() {
    // A table far larger than what it held (one keyword with many options)
    // is replaced, so that the keywords after it do not pay its size.
    if (slots_.size() > kInitialSlots && 4 * size_ < slots_.size())
        std::vector<Slot>(kInitialSlots).swap(slots_);
    else
        std::fill(slots_.begin(), slots_.end(), Slot{});
    size_ = 0;
}

void NamePositions::grow() {
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

}  // namespace quillet::lint
