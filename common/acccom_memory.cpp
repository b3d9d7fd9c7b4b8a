/*
 * acccom_memory.cpp - the exported functions of heap blocks and areas of memory.
 */
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "common/acccom.h"
#include "common/faults.h"

void CM_memcpy(void *destination, const void *source, unsigned int n) {
    if (n != 0) std::memcpy(destination, source, n);
}

void *CM_memmove(void *destination, const void *source, unsigned int n) {
    if (n != 0) std::memmove(destination, source, n);
    return destination;
}

void CM_memchg(void *a, void *b, int n) {
    if (n <= 0) return;
    auto *const first = static_cast<unsigned char *>(a);
    std::swap_ranges(first, first + n, static_cast<unsigned char *>(b));
}

void CM_memfill(void *destination, unsigned char byte, unsigned int n) {
    if (n != 0) std::memset(destination, byte, n);
}

void CM_memzero(void *destination, unsigned int n) {
    CM_memfill(destination, 0, n);
}

void *CM_malloc(unsigned int size) {
    if (acc::fault_hits(acc::Operation::heap)) return nullptr;
    return std::calloc(1, size != 0 ? size : 1);
}

void *CM_realloc(void *old_block, unsigned int old_size, unsigned int new_size) {
    void *const block = CM_malloc(new_size);
    if (block == nullptr) return nullptr;
    CM_memcpy(block, old_block, std::min(old_size, new_size));
    CM_free(old_block);
    return block;
}

void CM_free(void *block) {
    std::free(block);
}
