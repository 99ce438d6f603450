#include "model/text_registry.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <new>
#include <utility>

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
    const std::size_t mask = slots_ - 1;
    const std::uint32_t* const hashes = this->hashes();
    for (std::size_t index = hash & mask;; index = (index + 1) & mask) {
        const std::uint32_t slot = hashes[index];
        if (slot == 0 || (slot == hash && texts()[index].view() == text)) return index;
    }
}

TextRegistry& TextRegistry::operator=(TextRegistry&& other) noexcept {
    hashes_ = std::move(other.hashes_);
    texts_ = std::move(other.texts_);
    places_ = std::move(other.places_);
    keepsPlaces_ = other.keepsPlaces_;
    slots_ = std::exchange(other.slots_, 0);
    size_ = std::exchange(other.size_, 0);
    earlier_ = std::exchange(other.earlier_, nullptr);
    earlierLine_ = other.earlierLine_;
    return *this;
}

TextRegistry::TextRegistry(const TextRegistry& from, int after, int lines, const TextRegistry& was,
                           const TextRegistry& now)
    : hashes_(from.slots_ * sizeof(std::uint32_t)),
      texts_(from.slots_ * sizeof(Text)),
      places_(from.slots_ * sizeof(Position)),
      keepsPlaces_(true),
      slots_(from.slots_),
      size_(from.size_) {
    if (slots_ > 0) {
        std::memcpy(hashes(), from.hashes(), slots_ * sizeof(std::uint32_t));
        std::memcpy(texts_.data(), from.texts_.data(), slots_ * sizeof(Text));
        if (from.keepsPlaces_) std::memcpy(places(), from.places(), slots_ * sizeof(Position));
        else std::fill_n(places(), slots_, Position{});
        Position* const moved = places();
        for (std::size_t index = 0; index < slots_; ++index)
            if (moved[index].line > after) moved[index].line += lines;
    }
    for (std::size_t index = 0; index < was.slots_; ++index)
        if (was.hashes()[index] != 0 && !now.ownContains(was.texts()[index].view())) erase(was.texts()[index].view());
    for (std::size_t index = 0; index < now.slots_; ++index)
        if (now.hashes()[index] != 0) assign(now.texts()[index], now.places()[index]);
}

bool TextRegistry::addsOnlyTextsNewTo(const TextRegistry& was, const TextRegistry& file) const {
    for (std::size_t index = 0; index < slots_; ++index) {
        if (hashes()[index] == 0) continue;
        const std::string_view text = texts()[index].view();
        if (!was.ownContains(text) && file.ownContains(text)) return false;
    }
    return true;
}

bool TextRegistry::registersAsIn(const TextRegistry& other) const {
    if (size_ != other.size_) return false;
    for (std::size_t index = 0; index < slots_; ++index) {
        if (hashes()[index] == 0) continue;
        const std::string_view text = texts()[index].view();
        if (!other.ownContains(text)) return false;
        const std::optional<Position> place = other.placeOf(text);
        const Position mine = keepsPlaces_ ? places()[index] : Position{};
        if (!place || place->line != mine.line || place->column != mine.column) return false;
    }
    return true;
}

// Linear probing keeps every text reachable from its home slot: the texts
// after the freed slot move back into it where their probe passes it.
void TextRegistry::erase(std::string_view text) {
    if (slots_ == 0) return;
    const std::size_t mask = slots_ - 1;
    std::size_t hole = probe(text, hashOf(text));
    if (hashes()[hole] == 0) return;
    for (std::size_t next = (hole + 1) & mask; hashes()[next] != 0; next = (next + 1) & mask) {
        const std::size_t home = hashes()[next] & mask;
        // Whether `home` lies cyclically in (hole, next]: then the text stays.
        const bool stays = hole <= next ? hole < home && home <= next : hole < home || home <= next;
        if (stays) continue;
        hashes()[hole] = hashes()[next];
        texts()[hole] = texts()[next];
        if (keepsPlaces_) places()[hole] = places()[next];
        hole = next;
    }
    hashes()[hole] = 0;
    --size_;
}

void TextRegistry::assign(Text text, Position place) {
    if (insert(text, place)) return;
    const std::size_t index = probe(text, hashOf(text));
    texts()[index] = text;
    if (keepsPlaces_) places()[index] = place;
}

bool TextRegistry::ownContains(std::string_view text) const {
    if (slots_ == 0) return false;
    return hashes()[probe(text, hashOf(text))] != 0;
}

bool TextRegistry::contains(std::string_view text) const {
    return ownContains(text) || earlierPlace(text).has_value();
}

std::optional<Position> TextRegistry::earlierPlace(std::string_view text) const {
    if (earlier_ == nullptr) return std::nullopt;
    const std::optional<Position> place = earlier_->placeOf(text);
    if (!place || place->line >= earlierLine_) return std::nullopt;
    return place;
}

bool TextRegistry::insert(Text text, Position place) {
    if (earlier_ != nullptr && earlierPlace(text)) return false;
    if (overFull(size_ + 1, slots_)) rehash(std::max(kInitialSlots, 2 * slots_));
    const std::uint32_t hash = hashOf(text);
    const std::size_t index = probe(text, hash);
    if (hashes()[index] != 0) return false;
    hashes()[index] = hash;
    new (texts() + index) Text(text);
    if (keepsPlaces_) places()[index] = place;
    ++size_;
    return true;
}

void TextRegistry::keepPlaces() {
    keepsPlaces_ = true;
    if (slots_ > 0) rehash(slots_);
}

std::optional<Position> TextRegistry::placeOf(std::string_view text) const {
    if (slots_ == 0 || !keepsPlaces_) return earlierPlace(text);
    const std::size_t index = probe(text, hashOf(text));
    if (hashes()[index] == 0) return earlierPlace(text);
    return places()[index];
}

void TextRegistry::reserve(std::size_t count) {
    std::size_t wanted = std::bit_ceil(std::max(kInitialSlots, count));
    if (overFull(count, wanted)) wanted *= 2;
    if (wanted > slots_) rehash(wanted);
}

void TextRegistry::clear() {
    // Emptying a table costs its size, which the texts that filled it paid
    // for. A table far larger than what it holds (left by one keyword with
    // many options) is replaced instead, or every later keyword would pay
    // that size again.
    if (slots_ > kInitialSlots && 4 * size_ < slots_) {
        hashes_ = LargeBlock();
        texts_ = LargeBlock();
        places_ = LargeBlock();
        slots_ = 0;
    } else if (slots_ > 0) {
        std::memset(hashes(), 0, slots_ * sizeof(std::uint32_t));
    }
    size_ = 0;
}

void TextRegistry::rehash(std::size_t slotCount) {
    LargeBlock oldHashes(slotCount * sizeof(std::uint32_t));
    LargeBlock oldTexts(slotCount * sizeof(Text));
    LargeBlock oldPlaces = keepsPlaces_ ? LargeBlock(slotCount * sizeof(Position)) : LargeBlock();
    std::swap(oldHashes, hashes_);
    std::swap(oldTexts, texts_);
    std::swap(oldPlaces, places_);
    const auto* const movedPlaces = static_cast<const Position*>(oldPlaces.data());  // null before keepPlaces()
    const std::size_t oldSlots = std::exchange(slots_, slotCount);
    std::uint32_t* const hashes = this->hashes();
    std::memset(hashes, 0, slotCount * sizeof(std::uint32_t));
    const auto* const movedHashes = static_cast<const std::uint32_t*>(oldHashes.data());
    const auto* const movedTexts = static_cast<const Text*>(oldTexts.data());
    const std::size_t mask = slotCount - 1;
    for (std::size_t old = 0; old < oldSlots; ++old) {
        if (movedHashes[old] == 0) continue;
        std::size_t index = movedHashes[old] & mask;
        while (hashes[index] != 0) index = (index + 1) & mask;
        hashes[index] = movedHashes[old];
        new (texts() + index) Text(movedTexts[old]);
        if (keepsPlaces_) places()[index] = movedPlaces != nullptr ? movedPlaces[old] : Position{};
    }
}

}  // namespace quillet
