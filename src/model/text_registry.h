#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace quillet {

// A set of texts, for the registries that keep names and IDs unique. A large
// definition registers a million IDs: open addressing over copies kept in a
// few large blocks makes that one probe and no allocation per text.
class TextRegistry {
public:
    TextRegistry() = default;
    TextRegistry(const TextRegistry&) = delete;
    TextRegistry& operator=(const TextRegistry&) = delete;

    // Registers `text` (shorter than 4 GiB, as every word of a definition
    // is); false, registering nothing, when it is there already.
    bool insert(std::string_view text);
    bool contains(std::string_view text) const;
    // Forgets every text but keeps the memory for the next ones.
    void clear();
    std::size_t size() const { return size_; }

private:
    struct Slot {
        const char* data = nullptr;  // null: the slot is free
        std::uint32_t hash = 0;
        std::uint32_t length = 0;
    };

    std::size_t probe(std::string_view text, std::uint32_t hash) const;
    const char* keep(std::string_view text);
    void grow();

    struct Block {
        std::unique_ptr<char[]> bytes;
        std::size_t size;
    };

    std::vector<Slot> slots_;
    std::size_t size_ = 0;
    std::vector<Block> blocks_;
    std::size_t blockUsed_ = 0;  // of the last block
};

}  // namespace quillet
