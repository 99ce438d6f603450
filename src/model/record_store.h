#pragma once

#include <cstddef>
#include <new>
#include <utility>
#include <vector>

namespace quillet {

// Large, zero-free blocks of memory for records: a big definition creates a
// million of them, and one block per few thousand records spares as many
// allocations and lets the system back them with large pages.
void* allocateRecordBlock(std::size_t bytes);
void releaseRecordBlock(void* block);
constexpr std::size_t kRecordBlockBytes = std::size_t{2} << 20;

// Records of one type, created in place and destroyed with the store; a
// record never moves, so handles stay valid for the store's life.
template <typename Record>
class RecordStore {
public:
    RecordStore() = default;
    RecordStore(const RecordStore&) = delete;
    RecordStore& operator=(const RecordStore&) = delete;
    ~RecordStore() {
        for (std::size_t block = 0; block < blocks_.size(); ++block) {
            const std::size_t count = block + 1 == blocks_.size() ? usedInLast_ : kPerBlock;
            for (std::size_t i = 0; i < count; ++i) blocks_[block][i].~Record();
            releaseRecordBlock(blocks_[block]);
        }
    }

    template <typename... Args>
    Record* create(Args&&... args) {
        if (blocks_.empty() || usedInLast_ == kPerBlock) {
            blocks_.push_back(static_cast<Record*>(allocateRecordBlock(kRecordBlockBytes)));
            usedInLast_ = 0;
        }
        Record* record = new (blocks_.back() + usedInLast_) Record(std::forward<Args>(args)...);
        ++usedInLast_;
        return record;
    }

private:
    static constexpr std::size_t kPerBlock = kRecordBlockBytes / sizeof(Record);
    static_assert(kPerBlock > 0);

    std::vector<Record*> blocks_;
    std::size_t usedInLast_ = 0;
};

}  // namespace quillet
