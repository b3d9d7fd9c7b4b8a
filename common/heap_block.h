/*
 * heap_block.h - owner of one block of CM_malloc.
 */
#ifndef ACCSYM_COMMON_HEAP_BLOCK_H
#define ACCSYM_COMMON_HEAP_BLOCK_H

#include <cstddef>
#include <type_traits>
#include <utility>

#include "common/acccom.h"

namespace acc {

/** Gives its block back with CM_free when it ends. T is bytes or a plain record. */
template <typename T>
class HeapBlock {
    static_assert(std::is_trivially_copyable_v<T>); // all zero bytes are a value

  public:
    HeapBlock() = default;

    /** Takes over a block of CM_malloc, CM_realloc or a conversion; may be null. */
    explicit HeapBlock(T *block) : block_(block) {}

    /** New block of zero-filled elements; empty when the heap is exhausted or the size overflows.
     */
    static HeapBlock allocate(unsigned int count) {
        unsigned int size = 0;
        if (__builtin_mul_overflow(count, sizeof(T), &size)) return HeapBlock();
        return HeapBlock(static_cast<T *>(CM_malloc(size)));
    }

    HeapBlock(HeapBlock &&other) noexcept : block_(other.release()) {}
    HeapBlock &operator=(HeapBlock &&other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }
    ~HeapBlock() { CM_free(block_); }

    T *get() const { return block_; }
    explicit operator bool() const { return block_ != nullptr; }
    T &operator[](std::size_t index) const { return block_[index]; }
    T *operator->() const { return block_; }

    /** Gives up ownership. */
    [[nodiscard]] T *release() { return std::exchange(block_, nullptr); }

    /** Frees the block held and takes over another one, or none. */
    void reset(T *block = nullptr) { CM_free(std::exchange(block_, block)); }

  private:
    T *block_ = nullptr;
};

} // namespace acc

#endif
