#pragma once

#include <cstddef>

namespace quillet {

// Memory for big arrays (the model's record blocks, text blocks and registry
// tables; the language server's indexes). A block of more than half a large
// page is given whole large pages where the system has them: a million
// records then take a few hundred page faults instead of a hundred thousand,
// and random probes miss the TLB less. The bytes are uninitialised.
void* allocateLarge(std::size_t bytes);
// Gives back what allocateLarge(bytes) returned.
void releaseLarge(void* data, std::size_t bytes) noexcept;

class LargeBlock {
public:
    static constexpr std::size_t kLargePageBytes = std::size_t{2} << 20;

    LargeBlock() = default;
    explicit LargeBlock(std::size_t bytes) : data_(allocateLarge(bytes)), bytes_(bytes) {}
    LargeBlock(LargeBlock&& other) noexcept : data_(other.data_), bytes_(other.bytes_) { other.data_ = nullptr; }
    LargeBlock& operator=(LargeBlock&& other) noexcept;
    LargeBlock(const LargeBlock&) = delete;
    LargeBlock& operator=(const LargeBlock&) = delete;
    ~LargeBlock() { release(); }

    void* data() const { return data_; }

private:
    void release();

    void* data_ = nullptr;
    std::size_t bytes_ = 0;
};

// The same memory for a standard container that is rebuilt often.
template <typename T>
struct LargePageAllocator {
    using value_type = T;

    LargePageAllocator() = default;
    template <typename U>
    constexpr LargePageAllocator(const LargePageAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) { return static_cast<T*>(allocateLarge(count * sizeof(T))); }
    void deallocate(T* data, std::size_t count) noexcept { releaseLarge(data, count * sizeof(T)); }

    friend bool operator==(const LargePageAllocator&, const LargePageAllocator&) { return true; }
};

}  // namespace quillet
