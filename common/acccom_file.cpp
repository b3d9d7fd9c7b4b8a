/*
 * acccom_file.cpp - the exported file functions, over buffered streams of libc.
 */
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <cstring>

#include "common/acccom.h"
#include "common/faults.h"
#include "common/handle_table.h"

using acc::Operation;

namespace {

constexpr unsigned copy_piece_bytes = 64 * 1024;

} // namespace

int CM_open(const unsigned char *path, const char *mode) {
    if (path == nullptr || mode == nullptr) return -1;

    // "e": a program that the host starts does not inherit the file.
    std::array<char, 16> mode_with_e{};
    const std::size_t mode_length = std::strlen(mode);
    if (mode_length + 2 > mode_with_e.size()) return -1;
    std::memcpy(mode_with_e.data(), mode, mode_length);
    mode_with_e.data()[mode_length] = 'e';

    if (acc::fault_hits(Operation::open)) return -1;
    return acc::claim_handle(std::fopen(reinterpret_cast<const char *>(path), mode_with_e.data()));
}

int CM_create(const unsigned char *path) {
    return CM_open(path, "w+b");
}

int CM_close(int handle) {
    std::FILE *const stream = acc::give_up_handle(handle);
    if (stream == nullptr) return EOF;
    const bool fails = acc::fault_hits(Operation::flush);
    const int result = std::fclose(stream);
    return fails ? EOF : result;
}

int CM_read(int handle, int n, void *buffer) {
    std::FILE *const stream = acc::stream_of(handle);
    if (stream == nullptr || n <= 0) return 0;
    if (acc::fault_hits(Operation::read)) {
        acc::mark_failed(handle);
        return 0;
    }
    const auto wanted = static_cast<std::size_t>(n);
    const std::size_t count = std::fread(buffer, 1, wanted, stream);
    if (count < wanted && std::ferror(stream) != 0) acc::mark_failed(handle);
    return static_cast<int>(count);
}

int CM_write(int handle, int n, const void *buffer) {
    std::FILE *const stream = acc::stream_of(handle);
    if (stream == nullptr || n < 0) return -1;
    if (n == 0) return 0;
    const bool fails = acc::fault_hits(Operation::write);
    const auto wanted = static_cast<std::size_t>(fails ? n / 2 : n);
    if (std::fwrite(buffer, 1, wanted, stream) == wanted && !fails) return n;
    acc::mark_failed(handle);
    return -1;
}

int CM_seek(int handle, int offset, int origin) {
    std::FILE *const stream = acc::stream_of(handle);
    if (stream == nullptr) return -1;
    if (std::fseek(stream, offset, origin) != 0) return -1;
    std::clearerr(stream);
    acc::clear_failed(handle);
    return 0;
}

int CM_stat(const unsigned char *path) {
    struct stat status;
    if (stat(reinterpret_cast<const char *>(path), &status) != 0) return 0;
    return status.st_size <= INT_MAX ? static_cast<int>(status.st_size) : 0;
}

int CM_remove(const unsigned char *path) {
    if (acc::fault_hits(Operation::remove)) return -1;
    return std::remove(reinterpret_cast<const char *>(path));
}

int CM_CopyFile(int destination, int source) {
    std::array<unsigned char, copy_piece_bytes> piece;
    for (;;) {
        const int count = CM_read(source, copy_piece_bytes, piece.data());
        if (count == 0) return 0;
        if (CM_write(destination, count, piece.data()) == -1) return -1;
    }
}

int CM_CopyFilen(int destination, int source, unsigned int count) {
    std::array<unsigned char, copy_piece_bytes> piece;
    unsigned int done = 0;
    while (done < count) {
        const unsigned int wanted = std::min(count - done, copy_piece_bytes);
        const int read = CM_read(source, static_cast<int>(wanted), piece.data());
        if (read == 0) return 0;
        if (CM_write(destination, read, piece.data()) == -1) return -1;
        done += static_cast<unsigned int>(read);
    }
    return 0;
}
