#include <fcntl.h>
#include <unistd.h>

#include <set>
#include <thread>

#include "common/acccom.h"
#include "common/handle_table.h"
#include "common/heap_block.h"
#include "common/save_file.h"
#include "common/stream.h"
#include "support/faults.h"
#include "support/workspace.h"
#include "tests/common/bytes.h"

static bool file_system_has_links = true;

/** What the library reaches when it asks for a link. */
extern "C" int link(const char *from, const char *to) noexcept {
    if (file_system_has_links) return linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
    errno = EPERM;
    return -1;
}

namespace {

class Files : public testing::Test {
  protected:
    Bytes path(const Bytes &name) const { return ws.root / name; }
    Bytes file(const Bytes &name, const Bytes &content) const { return write_file(path(name), content), path(name); }

    Workspace ws;
};

TEST_F(Files, what_is_written_is_read_back) {
    const Bytes name = path("a");
    const int handle = CM_create(bytes(name));
    ASSERT_GT(handle, 0);
    EXPECT_EQ(CM_write(handle, 6, "abcdef"), 6);
    EXPECT_EQ(CM_write(handle, 0, "x"), 0);
    EXPECT_EQ(CM_write(handle, -1, "x"), -1);
    Bytes buffer(6, '.');
    EXPECT_EQ(CM_seek(handle, 1, 0), 0);
    EXPECT_EQ(CM_read(handle, 2, buffer.data()), 2);
    EXPECT_EQ(CM_seek(handle, 1, 1), 0);
    EXPECT_EQ(CM_read(handle, 6, buffer.data() + 2), 2);
    EXPECT_EQ(buffer, "bcef..");
    EXPECT_EQ(CM_seek(handle, -6, 2), 0);
    EXPECT_EQ(CM_read(handle, -1, buffer.data()), 0);
    EXPECT_EQ(CM_seek(handle, -7, 2), -1);
    EXPECT_FALSE(acc::stream_failed(handle));
    EXPECT_NE(fcntl(fileno(acc::stream_of(handle)), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_EQ(CM_close(handle), 0);
    for (const auto &[size, expected] : {std::pair{6LL, 6}, {2147483647LL, 2147483647}, {2147483648LL, 0}}) {
        std::filesystem::resize_file(name, static_cast<std::uintmax_t>(size));
        EXPECT_EQ(CM_stat(bytes(name)), expected);
    }
    EXPECT_EQ(CM_remove(bytes(name)), 0);
    EXPECT_EQ(CM_remove(bytes(name)), -1);
    EXPECT_EQ(CM_stat(bytes(name)), 0);
}

TEST_F(Files, missing_files_and_bad_handles_answer_failure) {
    const Bytes name = file("a", "x");
    EXPECT_EQ(CM_open(bytes(path("missing")), "r+b"), -1);
    EXPECT_EQ(CM_open(bytes(name), "rb and a very long mode"), -1);
    EXPECT_EQ(CM_open(nullptr, "rb"), -1);
    EXPECT_EQ(CM_open(bytes(name), nullptr), -1);
    EXPECT_TRUE(acc::OpenFile(CM_open(bytes(name), "r")));
    const int closed = CM_open(bytes(name), "rb");
    ASSERT_EQ(CM_close(closed), 0);
    char buffer[1];
    for (const int handle : {0, -1, closed, acc::handle_count + 1, INT_MIN}) {
        SCOPED_TRACE(handle);
        EXPECT_EQ(CM_close(handle), EOF);
        EXPECT_EQ(CM_read(handle, 1, buffer), 0);
        EXPECT_EQ(CM_write(handle, 1, buffer), -1);
        EXPECT_EQ(CM_seek(handle, 0, 0), -1);
        EXPECT_EQ(acc::sync(handle), -1);
        EXPECT_TRUE(acc::stream_failed(handle));
    }
}

TEST_F(Files, errors_are_told_from_the_end_of_the_file) {
    const acc::OpenFile to_read(CM_open(bytes(file("a", "x")), "rb"));
    EXPECT_EQ(CM_write(to_read.handle(), 1, "y"), -1);
    EXPECT_TRUE(acc::stream_failed(to_read.handle()));
    const acc::OpenFile no_file(CM_open(bytes(ws.root), "rb"));
    char buffer[1];
    EXPECT_EQ(CM_read(no_file.handle(), 1, buffer), 0);
    EXPECT_TRUE(acc::stream_failed(no_file.handle()));
    for (int (*const finish)(int) : {acc::flush, acc::sync, CM_close}) {
        const acc::OpenFile full(CM_open(bytes("/dev/full"), "r+b"));
        EXPECT_EQ(CM_write(full.handle(), 4, "abcd"), 4);
        EXPECT_EQ(finish(full.handle()), -1);
    }
}

TEST_F(Files, copies) {
    Bytes data;
    for (unsigned i = 0; i < 200001; ++i) data += static_cast<char>(i * i >> 3);
    const acc::OpenFile source(CM_open(bytes(file("source", data)), "rb"));
    constexpr unsigned all = 0xFFFFFFFF;
    for (const unsigned count : {0U, 1U, 65536U, 65537U, 199999U, 200000U, all}) {
        acc::OpenFile target(CM_create(bytes(path("target"))));
        ASSERT_EQ(CM_seek(source.handle(), 2, 0), 0);
        EXPECT_EQ(count == all ? CM_CopyFile(target.handle(), source.handle()) : CM_CopyFilen(target.handle(), source.handle(), count), 0);
        EXPECT_EQ(target.close(), 0);
        EXPECT_TRUE(read_file(path("target")) == data.substr(2, count)) << count;
    }
    ASSERT_EQ(CM_seek(source.handle(), 0, 0), 0);
    EXPECT_EQ(CM_CopyFilen(-1, source.handle(), 1), -1);
    EXPECT_EQ(CM_CopyFile(source.handle(), source.handle()), -1);
}

TEST_F(Files, new_files_replace_nothing) {
    Bytes name = path("new_XXXXXX");
    acc::OpenFile exclusive(acc::create_temporary(reinterpret_cast<unsigned char *>(name.data())));
    EXPECT_EQ(CM_write(exclusive.handle(), 1, "x"), 1);
    EXPECT_EQ(acc::sync(exclusive.handle()), 0);
    EXPECT_EQ(read_file(name), "x");
    EXPECT_EQ(std::filesystem::status(name).permissions(), std::filesystem::perms{0600});

    std::filesystem::create_symlink(path("nowhere"), path("dangling"));
    EXPECT_EQ(acc::create_new(bytes(path("dangling")), 0644), -1);
    EXPECT_TRUE(acc::OpenFile(acc::create_new(bytes(path("fresh")), 0644)));

    EXPECT_EQ(acc::rename_file(bytes(name), bytes(file("old", "replaced"))), 0);
    EXPECT_EQ(read_file(path("old")), "x");
    EXPECT_EQ(acc::rename_file(bytes(name), bytes(path("old"))), -1);
    EXPECT_EQ(acc::sync_directory(bytes(ws.root)), 0);
    EXPECT_EQ(acc::sync_directory(bytes(path("old"))), -1);
}

TEST_F(Files, a_taken_name_is_told_from_a_failure_without_links_too) {
    using enum acc::SaveResult;
    using Case = std::tuple<const char *, bool, int, acc::SaveResult>;
    file("taken", "old");
    for (const auto &[name, with_links, nth_fails, result] : {
             Case{"linked", true, 0, saved},
             {"renamed", false, 0, saved},
             {"taken", true, 0, taken},
             {"taken", false, 0, taken},
             {"no bytes", true, 2, write_failed},
             {"no move", true, 6, write_failed},
             {"no claim", false, 7, write_failed},
             {"missing/name", true, 0, cannot_create},
         }) {
        file_system_has_links = with_links;
        Fault fault(nth_fails, false);
        fault.arm();
        EXPECT_EQ(acc::create_file(bytes(path(name)), {bytes("new"), 3}), result) << name;
        EXPECT_EQ(read_file(path(name)), result == saved ? "new" : result == taken ? "old" : "") << name;
    }
    EXPECT_EQ(acc::move_new(bytes(path("missing")), bytes(path("claimed"))), acc::Move::failed);
    file_system_has_links = true;
    const std::filesystem::directory_iterator left(ws.root);
    const auto is_file = [](const auto &entry) { return entry.is_regular_file(); };
    EXPECT_EQ(std::count_if(begin(left), end(left), is_file), 3) << "nothing stray";
}

TEST_F(Files, last_handle_given_out_is_the_last_one_free) {
    char memory[1] = {};
    std::set<int> handles;
    const auto claim = [&] { return acc::claim_handle(fmemopen(memory, sizeof memory, "r")); };
    for (int handle = claim(); handle > 0; handle = claim()) {
        ASSERT_LE(handle, acc::handle_count);
        ASSERT_TRUE(handles.insert(handle).second) << handle;
    }
    EXPECT_EQ(handles.size(), static_cast<std::size_t>(acc::handle_count));
    EXPECT_EQ(CM_open(bytes(file("a", "")), "rb"), -1);
    Bytes name = ws.temp / "XXXXXX";
    EXPECT_EQ(acc::create_temporary(reinterpret_cast<unsigned char *>(name.data())), -1);
    EXPECT_EQ(acc::create_new(bytes(ws.temp / "b"), 0644), -1);
    EXPECT_TRUE(ws.temp_files().empty()) << "a file that nobody can write";
    EXPECT_EQ(CM_close(7), 0);
    EXPECT_EQ(claim(), 7);
    for (const int handle : handles) EXPECT_EQ(CM_close(handle), 0);
}

TEST_F(Files, threads_never_share_a_handle) {
    const auto work = [] {
        std::FILE *const own = std::fopen("/dev/null", "rb");
        for (int i = 0; i < 1000000; ++i) ASSERT_EQ(acc::give_up_handle(acc::claim_handle(own)), own);
        std::fclose(own);
    };
    std::thread other(work);
    work();
    other.join();
}

TEST(Memory, blocks_are_zero_filled_and_moved_whole) {
    auto *block = static_cast<unsigned char *>(CM_malloc(4));
    EXPECT_EQ(Bytes(block, block + 4), "\0\0\0\0"s);
    CM_memfill(block, 'x', 4);
    Fault no_memory(1, true);
    no_memory.arm();
    EXPECT_EQ(CM_realloc(block, 4, 8), nullptr);
    EXPECT_FALSE(acc::HeapBlock<int>::allocate(1));
    Fault::disarm();
    block = static_cast<unsigned char *>(CM_realloc(block, 4, 8));
    EXPECT_EQ(Bytes(block, block + 8), "xxxx\0\0\0\0"s);
    block = static_cast<unsigned char *>(CM_realloc(block, 8, 2));
    EXPECT_EQ(Bytes(block, block + 2), "xx");
    CM_free(block);
    CM_free(CM_realloc(nullptr, 0, 4));
    EXPECT_FALSE(acc::HeapBlock<int>::allocate(0x40000001));
}

TEST(Memory, areas) {
    Bytes a = "abcdef", b = "ABCDEF";
    CM_memchg(a.data(), b.data(), 3);
    CM_memchg(a.data(), b.data(), -2);
    EXPECT_EQ(a + b, "ABCdefabcDEF");
    EXPECT_EQ(CM_memmove(a.data() + 1, a.data(), 5), a.data() + 1);
    EXPECT_EQ(a, "AABCde");
    CM_memcpy(a.data(), b.data(), 2);
    CM_memzero(a.data() + 3, 2);
    EXPECT_EQ(a, "abB\0\0e"s);
}

} // namespace
