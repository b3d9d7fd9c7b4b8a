#include "common/whole_file.h"

#include <sys/stat.h>

#include <algorithm>

#include "common/handle_table.h"
#include "common/stream.h"

namespace acc {

namespace {

/** Bytes that the file says it has; a guess at how many there are to read. */
unsigned expected_bytes(int handle, unsigned most) {
    struct stat status;
    std::FILE *const stream = stream_of(handle);
    if (stream == nullptr || fstat(fileno(stream), &status) != 0 || status.st_size < 0) return 0;
    return static_cast<unsigned>(std::min<off_t>(status.st_size, most));
}

} // namespace

WholeFile read_to_end(int handle, unsigned most) {
    using Result = WholeFile::Result;
    // Room for one byte more than is wanted shows the end, and takes the NUL.
    unsigned room = expected_bytes(handle, most) + 1;
    auto bytes = HeapBlock<unsigned char>::allocate(room);
    unsigned length = 0;
    while (bytes) {
        const int wanted = static_cast<int>(room - length);
        length += static_cast<unsigned>(CM_read(handle, wanted, bytes.get() + length));
        if (stream_failed(handle)) return {Result::failed, {}, 0};
        // What lies behind is 0, the NUL too: a new block is zero-filled.
        if (length < room) return {Result::read, std::move(bytes), length};
        if (length > most) return {Result::too_large, {}, 0};
        const unsigned larger = static_cast<unsigned>(std::min(2ULL * room, most + 1ULL));
        void *const moved = CM_realloc(bytes.get(), room, larger);
        if (moved == nullptr) break;
        static_cast<void>(bytes.release()); // CM_realloc has freed it
        bytes.reset(static_cast<unsigned char *>(moved));
        room = larger;
    }
    return {Result::no_memory, {}, 0};
}

} // namespace acc
