#include "common/handle_table.h"

#include <array>
#include <atomic>
#include <cerrno>

namespace acc {

namespace {

/** Handle h is slot h - 1, which is free while its stream is null. */
struct Slot {
    std::atomic<std::FILE *> stream;
    std::atomic<bool> failed;
};

constinit std::array<Slot, handle_count> slots{};

Slot *slot_of(int handle) {
    if (handle < 1 || handle > handle_count) return nullptr;
    return slots.data() + (handle - 1);
}

} // namespace

int claim_handle(std::FILE *stream) {
    if (stream == nullptr) return -1;
    for (int handle = 1; handle <= handle_count; ++handle) {
        Slot &slot = *slot_of(handle);
        std::FILE *free_slot = nullptr;
        if (slot.stream.compare_exchange_strong(free_slot, stream)) {
            slot.failed.store(false);
            return handle;
        }
    }
    std::fclose(stream);
    errno = EMFILE;
    return -1;
}

std::FILE *stream_of(int handle) {
    const Slot *const slot = slot_of(handle);
    return slot == nullptr ? nullptr : slot->stream.load();
}

std::FILE *give_up_handle(int handle) {
    Slot *const slot = slot_of(handle);
    return slot == nullptr ? nullptr : slot->stream.exchange(nullptr);
}

void mark_failed(int handle) {
    slot_of(handle)->failed.store(true);
}

void clear_failed(int handle) {
    slot_of(handle)->failed.store(false);
}

bool is_marked_failed(int handle) {
    return stream_of(handle) == nullptr || slot_of(handle)->failed.load();
}

} // namespace acc
