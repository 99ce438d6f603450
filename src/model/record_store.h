#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>
#include <vector>

namespace quillet {

// Memory for records, in blocks that double in size up to two megabytes: a
// small definition takes little, and a big one (a million options) gets one
// allocation per few thousand records, in blocks the system may back with
// large pages.
constexpr std::size_t kLargeRecordBlockBytes = std::size_t{2} << 20;
void* allocateRecordBlock(std::size_t bytes);
void releaseRecordBlock(void* block, std::size_t bytes);

// Records of one type, created in place and destroyed with the store; a
// record never moves, so handles stay valid for the store's life.
template <typename Record>
class RecordStore {
public:
    RecordStore() = default;
    RecordStore(const RecordStore&) = delete;
    RecordStore& operator=(const RecordStore&) = delete;
    ~RecordStore() {
        for (Block& block : blocks_) {
            for (std::size_t i = 0; i < block.used; ++i) block.records[i].~Record();
            releaseRecordBlock(block.records, block.capacity * sizeof(Record));
        }
    }

    template <typename... Args>
    Record* create(Args&&... args) {
        if (blocks_.empty() || blocks_.back().used == blocks_.back().capacity) {
            const std::size_t capacity =
                blocks_.empty() ? kFirstBlock : std::min(2 * blocks_.back().capacity, kLargestBlock);
            blocks_.push_back(Block{static_cast<Record*>(allocateRecordBlock(capacity * sizeof(Record))), 0, capacity});
        }
        Block& block = blocks_.back();
        Record* record = new (block.records + block.used) Record(std::forward<Args>(args)...);
        ++block.used;
        return record;
    }

private:
    struct Block {
        Record* records;
        std::size_t used;
        std::size_t capacity;
    };
    static constexpr std::size_t kFirstBlock = 16;
    static constexpr std::size_t kLargestBlock = std::max(kFirstBlock, kLargeRecordBlockBytes / sizeof(Record));

    std::vector<Block> blocks_;
};

}  // namespace quillet
