#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "model/reporter.h"

namespace quillet::lint {

// Where each name was first given, for the note at a duplicate. A large
// definition gives a million IDs: open addressing over views of the model's
// own texts (which outlive the table) keeps this one probe and no allocation
// per name.
class NamePositions {
public:
    // Keeps the first position of a name.
    void add(std::string_view name, Position position);
    std::optional<Position> find(std::string_view name) const;
    // Forgets every name but keeps the memory for the next ones.
    void clear();

private:
    struct Slot {
        const char* data = nullptr;  // null: the slot is free
        std::uint32_t hash = 0;
        std::uint32_t length = 0;
        Position position;
    };

    std::size_t probe(std::string_view name, std::uint32_t hash) const;
    void grow();

    std::vector<Slot> slots_;
    std::size_t size_ = 0;
};

}  // namespace quillet::lint
