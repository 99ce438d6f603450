#include "model/large_block.h"

#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace quillet {

LargeBlock::LargeBlock(std::size_t bytes) {
    if (2 * bytes <= kLargePageBytes) {
        data_ = ::operator new(bytes);
        return;
    }
    // Rounded up to whole large pages, as aligned_alloc wants a multiple of
    // the alignment.
    const std::size_t rounded = (bytes + kLargePageBytes - 1) / kLargePageBytes * kLargePageBytes;
    data_ = std::aligned_alloc(kLargePageBytes, rounded);
    if (data_ == nullptr) throw std::bad_alloc();
    large_ = true;
#if defined(MADV_HUGEPAGE)
    // Only a hint: where large pages are not to be had, nothing changes.
    madvise(data_, rounded, MADV_HUGEPAGE);
#endif
}

LargeBlock& LargeBlock::operator=(LargeBlock&& other) noexcept {
    if (this != &other) {
        release();
        data_ = other.data_;
        large_ = other.large_;
        other.data_ = nullptr;
    }
    return *this;
}

void LargeBlock::release() {
    if (data_ == nullptr) return;
    if (large_) std::free(data_);
    else ::operator delete(data_);
    data_ = nullptr;
}

}  // namespace quillet
