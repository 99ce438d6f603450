#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>
#include <vector>

#include "model/large_block.h"

namespace quillet {

// Records of one type, created in place and destroyed with the store; a
// record never moves, so handles stay valid for the store's life. The blocks
// double in size up to a large page: a small definition takes little, and a
// big one (a million options) gets one allocation per few thousand records.
template <typename Record>
class RecordStore {
public:
    RecordStore() = default;
    RecordStore(const RecordStore&) = delete;
    RecordStore& operator=(const RecordStore&) = delete;
    ~RecordStore() { clear(); }

    // Destroys every record; the handles to them are dangling after.
    void clear() {
        for (Block& block : blocks_) {
            for (std::size_t i = 0; i < block.used; ++i) block.records()[i].~Record();
        }
        blocks_.clear();
    }

    template <typename... Args>
    Record* create(Args&&... args) {
        if (blocks_.empty() || blocks_.back().used == blocks_.back().capacity) {
            const std::size_t capacity =
                blocks_.empty() ? kFirstBlock : std::min(2 * blocks_.back().capacity, kLargestBlock);
            blocks_.push_back(Block{LargeBlock(capacity * sizeof(Record)), 0, capacity});
        }
        Block& block = blocks_.back();
        Record* record = new (block.records() + block.used) Record(std::forward<Args>(args)...);
        ++block.used;
        return record;
    }

private:
    struct Block {
        LargeBlock memory;
        std::size_t used;
        std::size_t capacity;
        Record* records() const { return static_cast<Record*>(memory.data()); }
    };
    static constexpr std::size_t kFirstBlock = 16;
    static constexpr std::size_t kLargestBlock = std::max(kFirstBlock, LargeBlock::kLargePageBytes / sizeof(Record));

    std::vector<Block> blocks_;
};

}  // namespace quillet
