#include "model/record_store.h"

#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace quillet {

void* allocateRecordBlock(std::size_t bytes) {
    void* block = std::aligned_alloc(kRecordBlockBytes, bytes);
    if (block == nullptr) throw std::bad_alloc();
#if defined(MADV_HUGEPAGE)
    // Only a hint: where large pages are not to be had, nothing changes.
    madvise(block, bytes, MADV_HUGEPAGE);
#endif
    return block;
}

void releaseRecordBlock(void* block) { std::free(block); }

}  // namespace quillet
