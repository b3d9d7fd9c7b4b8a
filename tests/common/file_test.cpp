#include <fcntl.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>
#include <vector>

#include "common/acccom.h"
#include "common/faults.h"
#include "common/handle_table.h"
#include "common/heap_block.h"
#include "common/stream.h"
#include "tests/common/bytes.h"

namespace {

using acc::Operation;

void fail_always(Operation operation) {
    static Operation failing;
    failing = operation;
    acc::set_fault_hook([](Operation asked) { return asked == failing; });
}

class Files : public testing::Test {
  protected:
    void SetUp() override { ASSERT_NE(mkdtemp(directory.data()), nullptr); }
    void TearDown() override {
        acc::set_fault_hook(nullptr);
        std::filesystem::remove_all(directory);
    }

    std::string path(const char *name) const { return directory + "/" + name; }

    std::string file(const char *name, const Bytes &content) const {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

    static Bytes content(const std::string &path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string directory = std::filesystem::temp_directory_path() / "common_test_XXXXXX";
};

TEST_F(Files, what_is_written_is_read_back) {
    const std::string name = path("a");
    const int handle = CM_create(u(name));
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
    EXPECT_EQ(CM_stat(u(name)), 6);
    for (const auto &[size, expected] : {std::pair{2147483647LL, 2147483647}, {2147483648LL, 0}}) {
        std::filesystem::resize_file(name, static_cast<std::uintmax_t>(size));
        EXPECT_EQ(CM_stat(u(name)), expected);
    }
    EXPECT_EQ(CM_remove(u(name)), 0);
    EXPECT_EQ(CM_remove(u(name)), -1);
    EXPECT_EQ(CM_stat(u(name)), 0);
}

TEST_F(Files, missing_files_and_bad_handles_answer_failure) {
    EXPECT_EQ(CM_open(u(path("missing")), "r+b"), -1);
    EXPECT_EQ(CM_open(u(file("a", "x")), "rb and a very long mode"), -1);
    EXPECT_EQ(CM_open(nullptr, "rb"), -1);
    EXPECT_EQ(CM_open(u(path("a")), nullptr), -1);
    const int closed = CM_open(u(path("a")), "rb");
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
    const acc::OpenFile to_read(CM_open(u(file("a", "x")), "rb"));
    EXPECT_EQ(CM_write(to_read.handle(), 1, "y"), -1);
    EXPECT_TRUE(acc::stream_failed(to_read.handle()));
    const acc::OpenFile no_file(CM_open(u(directory), "rb"));
    char buffer[1];
    EXPECT_EQ(CM_read(no_file.handle(), 1, buffer), 0);
    EXPECT_TRUE(acc::stream_failed(no_file.handle()));
    for (int (*const finish)(int) : {acc::flush, acc::sync, CM_close}) {
        const int full = CM_open(u("/dev/full"), "r+b");
        ASSERT_GT(full, 0);
        EXPECT_EQ(CM_write(full, 4, "abcd"), 4);
        EXPECT_EQ(finish(full), -1);
        CM_close(full);
    }
}

TEST_F(Files, copies) {
    Bytes data;
    for (unsigned i = 0; i < 200001; ++i) data += static_cast<char>(i * i >> 3);
    const std::string source_name = file("source", data);
    constexpr unsigned all = 0xFFFFFFFF;
    for (const unsigned count : {0U, 1U, 65536U, 65537U, 199999U, 200000U, all}) {
        acc::OpenFile source(CM_open(u(source_name), "rb"));
        acc::OpenFile target(CM_create(u(path("target"))));
        ASSERT_EQ(CM_seek(source.handle(), 2, 0), 0);
        EXPECT_EQ(count == all ? CM_CopyFile(target.handle(), source.handle()) : CM_CopyFilen(target.handle(), source.handle(), count), 0);
        EXPECT_EQ(target.close(), 0);
        EXPECT_TRUE(content(path("target")) == data.substr(2, count)) << count;
    }
    const acc::OpenFile source(CM_open(u(source_name), "rb"));
    EXPECT_EQ(CM_CopyFile(source.handle(), source.handle()), -1);
    EXPECT_EQ(CM_CopyFilen(-1, source.handle(), 1), -1);
}

TEST_F(Files, new_files_replace_nothing) {
    std::string name = path("new_XXXXXX");
    acc::OpenFile exclusive(acc::create_temporary(reinterpret_cast<unsigned char *>(name.data())));
    ASSERT_TRUE(exclusive);
    EXPECT_EQ(CM_write(exclusive.handle(), 1, "x"), 1);
    EXPECT_EQ(acc::sync(exclusive.handle()), 0);
    EXPECT_EQ(content(name), "x");
    EXPECT_EQ(std::filesystem::status(name).permissions(), std::filesystem::perms{0600});

    std::filesystem::create_symlink(path("nowhere"), path("dangling"));
    EXPECT_EQ(acc::create_new(u(path("dangling")), 0644), -1);
    EXPECT_TRUE(acc::OpenFile(acc::create_new(u(path("fresh")), 0644)));

    EXPECT_EQ(acc::rename_file(u(name), u(file("old", "replaced"))), 0);
    EXPECT_EQ(content(path("old")), "x");
    EXPECT_EQ(acc::rename_file(u(name), u(path("old"))), -1);
    EXPECT_EQ(acc::sync_directory(u(directory)), 0);
    EXPECT_EQ(acc::sync_directory(u(path("old"))), -1);
}

TEST_F(Files, every_operation_can_be_made_to_fail) {
    static std::vector<Operation> asked;
    acc::set_fault_hook([](Operation operation) { return asked.push_back(operation), false; });
    acc::OpenFile handle(CM_create(u(path("a"))));
    CM_write(handle.handle(), 1, "x");
    acc::sync(handle.handle());
    CM_read(handle.handle(), 1, std::array<char, 1>().data());
    handle.close();
    acc::rename_file(u(path("a")), u(path("b")));
    acc::sync_directory(u(directory));
    CM_remove(u(path("b")));
    using enum Operation;
    EXPECT_EQ(asked, (std::vector{open, write, flush, sync, read, flush, rename, sync, Operation::remove}));

    handle = acc::OpenFile(CM_create(u(path("half"))));
    fail_always(write);
    EXPECT_EQ(CM_write(handle.handle(), 4, "abcd"), -1);
    fail_always(flush);
    EXPECT_EQ(handle.close(), -1);
    EXPECT_EQ(content(path("half")), "ab");
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
    EXPECT_EQ(CM_open(u(file("a", "")), "rb"), -1);
    EXPECT_EQ(CM_close(7), 0);
    EXPECT_EQ(claim(), 7);
    for (const int handle : handles) EXPECT_EQ(CM_close(handle), 0);
}

TEST_F(Files, threads_use_files_of_their_own_at_one_time) {
    const auto work = [&](const char *name, int first_letter) {
        std::FILE *const own = std::fopen("/dev/null", "rb");
        for (int i = 0; i < 1000000; ++i) ASSERT_EQ(acc::give_up_handle(acc::claim_handle(own)), own);
        std::fclose(own);
        for (int round = 0; round < 100; ++round) {
            const Bytes data(1000, static_cast<char>(first_letter + round % 13));
            Bytes back(1000, '.');
            const int handle = CM_create(u(path(name)));
            const bool good = CM_write(handle, 1000, data.data()) == 1000 && CM_seek(handle, 0, 0) == 0 &&
                              CM_read(handle, 1000, back.data()) == 1000 && CM_close(handle) == 0 && back == data;
            ASSERT_TRUE(good) << name << " round " << round;
        }
    };
    std::thread other(work, "first", 'a');
    work("second", 'n');
    other.join();
}

TEST(Memory, blocks_are_zero_filled_and_moved_whole) {
    auto *block = static_cast<unsigned char *>(CM_realloc(nullptr, 0, 4));
    EXPECT_EQ(hex(Bytes(block, block + 4)), hex("\0\0\0\0"s));
    CM_memfill(block, 'x', 4);
    fail_always(Operation::heap);
    EXPECT_EQ(CM_realloc(block, 4, 8), nullptr);
    EXPECT_FALSE(acc::HeapBlock<int>::allocate(1));
    acc::set_fault_hook(nullptr);
    block = static_cast<unsigned char *>(CM_realloc(block, 4, 8));
    EXPECT_EQ(hex(Bytes(block, block + 8)), hex("xxxx\0\0\0\0"s));
    block = static_cast<unsigned char *>(CM_realloc(block, 8, 2));
    EXPECT_EQ(hex(Bytes(block, block + 2)), hex("xx"));
    CM_free(block);
    CM_free(nullptr);
    EXPECT_FALSE(acc::HeapBlock<int>::allocate(0x40000001));
}

TEST(Memory, areas) {
    Bytes a = "abcdef";
    Bytes b = "ABCDEF";
    CM_memchg(a.data(), b.data(), 3);
    CM_memchg(a.data(), b.data(), -2);
    EXPECT_EQ(a + b, "ABCdefabcDEF");
    EXPECT_EQ(CM_memmove(a.data() + 1, a.data(), 5), a.data() + 1);
    EXPECT_EQ(a, "AABCde");
    CM_memcpy(a.data(), b.data(), 2);
    CM_memzero(a.data() + 3, 2);
    EXPECT_EQ(hex(a), hex("abB\0\0e"s));
}

} // namespace
