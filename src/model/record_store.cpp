#include "model/record_store.h"

#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace quillet {

namespace {

// Blocks of more than half a large page are given whole large pages.
bool isLarge(std::size_t bytes) { return 2 * bytes > kLargeRecordBlockBytes; }

}  // namespace

void* allocateRecordBlock(std::size_t bytes) {
    if (!isLarge(bytes)) return ::operator new(bytes);
    // Rounded up to whole large pages, as aligned_alloc wants a multiple of
    // the alignment.
    const std::size_t rounded = (bytes + kLargeRecordBlockBytes - 1) / kLargeRecordBlockBytes * kLargeRecordBlockBytes;
    void* block = std::aligned_alloc(kLargeRecordBlockBytes, rounded);
    if (block == nullptr) throw std::bad_alloc();
#if defined(MADV_HUGEPAGE)
    // Only a hint: where large pages are not to be had, nothing changes.
    madvise(block, rounded, MADV_HUGEPAGE);
#endif
    return block;
}

void releaseRecordBlock(void* block, std::size_t bytes) {
    if (!isLarge(bytes)) ::operator delete(block);
    else std::free(block);
}

}  // namespace quillet
