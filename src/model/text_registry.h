#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "model/large_block.h"
#include "model/reporter.h"
#include "model/text.h"

namespace quillet {

// A set of texts, for the registries that keep names and IDs unique. A large
// definition registers a million IDs: open addressing over the texts the
// model keeps anyway makes that one probe and no copy per text. The probe
// walks an array of 32-bit hashes only, sixteen slots to a cache line, and
// reads a slot's text only when its hash matches.
class TextRegistry {
public:
    TextRegistry() = default;
    TextRegistry(const TextRegistry&) = delete;
    TextRegistry& operator=(const TextRegistry&) = delete;
    TextRegistry(TextRegistry&& other) noexcept { *this = std::move(other); }
    TextRegistry& operator=(TextRegistry&& other) noexcept;
    // A copy of `from`, with places kept, for the file after one part of it,
    // read alone as `was`, was read again as `now`: the places after line
    // `after` move by `lines`, the texts `was` took itself and `now` does
    // not are gone, and those `now` took itself are at its places.
    TextRegistry(const TextRegistry& from, int after, int lines, const TextRegistry& was, const TextRegistry& now);

    // Registers `text`, which must outlive the registry, given at `place`;
    // false, registering nothing, when an equal text is there already.
    bool insert(Text text, Position place = {});
    bool contains(std::string_view text) const;
    // Keeps the place each text was registered at, for placeOf(). The tool
    // never asks, and keeps none; the linter's notes point there.
    void keepPlaces();
    std::optional<Position> placeOf(std::string_view text) const;
    // Texts that `earlier`, with places kept, registered on a line before
    // `line` count as registered here too, at their place there: a part of
    // a file read again sees the names the lines before it took.
    void lookBehind(const TextRegistry& earlier, int line) {
        earlier_ = &earlier;
        earlierLine_ = line;
    }
    // Whether every text this registered itself and `was` did not is
    // unknown to `file` too (what they look behind at left out).
    bool addsOnlyTextsNewTo(const TextRegistry& was, const TextRegistry& file) const;
    // Whether this registered itself the very texts `other` did, each at
    // the same place.
    bool registersAsIn(const TextRegistry& other) const;
    // Room for `count` texts without growing.
    void reserve(std::size_t count);
    // Forgets every text.
    void clear();
    std::size_t size() const { return size_; }

private:
    std::uint32_t* hashes() const { return static_cast<std::uint32_t*>(hashes_.data()); }
    Text* texts() const { return static_cast<Text*>(texts_.data()); }
    Position* places() const { return static_cast<Position*>(places_.data()); }
    std::size_t probe(std::string_view text, std::uint32_t hash) const;
    bool ownContains(std::string_view text) const;
    void erase(std::string_view text);
    // Registers `text` at `place`, or moves it there with this Text.
    void assign(Text text, Position place);
    std::optional<Position> earlierPlace(std::string_view text) const;
    void rehash(std::size_t slotCount);

    // A slot's text is constructed when its hash is set, and read only then.
    LargeBlock hashes_;  // 0 marks a free slot
    LargeBlock texts_;
    LargeBlock places_;  // by slot, when kept
    bool keepsPlaces_ = false;
    std::size_t slots_ = 0;
    std::size_t size_ = 0;
    const TextRegistry* earlier_ = nullptr;
    int earlierLine_ = 0;
};

}  // namespace quillet
