#pragma once

#include <cstddef>

namespace quillet {

// Memory for the model's big arrays (record blocks, text blocks, registry
// tables). A block of more than half a large page is given whole large pages
// where the system has them: a million records then take a few hundred page
// faults instead of a hundred thousand, and random probes miss the TLB less.
// The bytes are uninitialised.
class LargeBlock {
public:
    static constexpr std::size_t kLargePageBytes = std::size_t{2} << 20;

    LargeBlock() = default;
    explicit LargeBlock(std::size_t bytes);
    LargeBlock(LargeBlock&& other) noexcept : data_(other.data_), large_(other.large_) { other.data_ = nullptr; }
    LargeBlock& operator=(LargeBlock&& other) noexcept;
    LargeBlock(const LargeBlock&) = delete;
    LargeBlock& operator=(const LargeBlock&) = delete;
    ~LargeBlock() { release(); }

    void* data() const { return data_; }

private:
    void release();

    void* data_ = nullptr;
    bool large_ = false;  // from aligned_alloc, not operator new
};

}  // namespace quillet
