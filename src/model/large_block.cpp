#include "model/large_block.h"

#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace quillet {

namespace {

bool isLarge(std::size_t bytes) { return 2 * bytes > LargeBlock::kLargePageBytes; }

}  // namespace

void* allocateLarge(std::size_t bytes) {
    if (!isLarge(bytes)) return ::operator new(bytes);
    // Rounded up to whole large pages, as aligned_alloc wants a multiple of
    // the alignment.
    const std::size_t rounded =
        (bytes + LargeBlock::kLargePageBytes - 1) / LargeBlock::kLargePageBytes * LargeBlock::kLargePageBytes;
    void* data = std::aligned_alloc(LargeBlock::kLargePageBytes, rounded);
    if (data == nullptr) throw std::bad_alloc();
#if defined(MADV_HUGEPAGE)
    // Only a hint: where large pages are not to be had, nothing changes.
    madvise(data, rounded, MADV_HUGEPAGE);
#endif
    return data;
}

void releaseLarge(void* data, std::size_t bytes) noexcept {
    if (isLarge(bytes)) std::free(data);
    else ::operator delete(data);
}

LargeBlock& LargeBlock::operator=(LargeBlock&& other) noexcept {
    if (this != &other) {
        release();
        data_ = other.data_;
        bytes_ = other.bytes_;
        other.data_ = nullptr;
    }
    return *this;
}

void LargeBlock::release() {
    if (data_ == nullptr) return;
    releaseLarge(data_, bytes_);
    data_ = nullptr;
}

}  // namespace quillet
