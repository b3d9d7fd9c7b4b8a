#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
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

class Files : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = std::filesystem::temp_directory_path() / "common_test_XXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        directory = name;
    }
    void TearDown() override {
        acc::set_fault_hook(nullptr);
        std::filesystem::remove_all(directory);
    }

    std::string path(const char *name) const { return directory / name; }

    std::string file(const char *name, const Bytes &content) const {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

    static Bytes content(const std::string &path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::filesystem::path directory;
};

/** Makes one kind of operation fail, always, until it ends. */
class Fault {
  public:
    explicit Fault(Operation operation) {
        failing = operation;
        acc::set_fault_hook([](Operation asked) { return asked == failing; });
    }
    Fault(const Fault &) = delete;
    Fault &operator=(const Fault &) = delete;
    ~Fault() { acc::set_fault_hook(nullptr); }

  private:
    static inline Operation failing;
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
    EXPECT_EQ(CM_read(handle, 6, buffer.data()), 0);
    EXPECT_EQ(CM_seek(handle, -6, 2), 0);
    EXPECT_EQ(CM_read(handle, 0, buffer.data()), 0);
    EXPECT_EQ(CM_read(handle, -1, buffer.data()), 0);
    EXPECT_EQ(CM_seek(handle, -7, 2), -1);
    EXPECT_FALSE(acc::stream_failed(handle));
    EXPECT_NE(fcntl(fileno(acc::stream_of(handle)), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_EQ(CM_close(handle), 0);
    EXPECT_EQ(CM_stat(u(name)), 6);
    EXPECT_EQ(CM_remove(u(name)), 0);
    EXPECT_EQ(CM_remove(u(name)), -1);
    EXPECT_EQ(CM_stat(u(name)), 0);
}

TEST_F(Files, size_of_2_gib_does_not_fit) {
    const std::string name = file("large", "");
    for (const auto &[size, expected] : {std::pair{2147483647LL, 2147483647}, {2147483648LL, 0}}) {
        std::error_code error;
        std::filesystem::resize_file(name, static_cast<std::uintmax_t>(size), error);
        ASSERT_FALSE(error);
        EXPECT_EQ(CM_stat(u(name)), expected);
    }
}

TEST_F(Files, failures_of_opening) {
    EXPECT_EQ(CM_open(u(path("missing")), "rb"), -1);
    EXPECT_EQ(CM_open(u(path("missing")), "r+b"), -1);
    EXPECT_EQ(CM_open(u(file("a", "")), "rb and a very long mode"), -1);
    EXPECT_EQ(CM_open(nullptr, "rb"), -1);
    EXPECT_EQ(CM_open(u(path("a")), nullptr), -1);
    EXPECT_EQ(CM_create(u(path("missing/a"))), -1);
}

TEST_F(Files, bad_handles_answer_failure) {
    const int closed = CM_open(u(file("a", "x")), "rb");
    ASSERT_EQ(CM_close(closed), 0);
    char buffer[1];
    for (const int handle : {0, -1, closed, acc::handle_count, acc::handle_count + 1, INT_MIN}) {
        SCOPED_TRACE(handle);
        EXPECT_EQ(CM_close(handle), EOF);
        EXPECT_EQ(CM_read(handle, 1, buffer), 0);
        EXPECT_EQ(CM_write(handle, 1, buffer), -1);
        EXPECT_EQ(CM_seek(handle, 0, 0), -1);
        EXPECT_EQ(acc::flush(handle), -1);
        EXPECT_EQ(acc::sync(handle), -1);
        EXPECT_TRUE(acc::stream_failed(handle));
    }
}

TEST_F(Files, writing_a_handle_opened_to_read_fails) {
    const acc::OpenFile handle(CM_open(u(file("a", "x")), "rb"));
    EXPECT_EQ(CM_write(handle.handle(), 1, "y"), -1);
    EXPECT_TRUE(acc::stream_failed(handle.handle()));
}

TEST_F(Files, full_device_is_noticed_when_flushed) {
    for (int (*const finish)(int) : {acc::flush, acc::sync, CM_close}) {
        const int handle = CM_open(u("/dev/full"), "r+b");
        ASSERT_GT(handle, 0);
        EXPECT_EQ(CM_write(handle, 4, "abcd"), 4);
        EXPECT_EQ(finish(handle), -1);
        CM_close(handle);
    }
}

TEST_F(Files, read_error_differs_from_the_end_of_the_file) {
    const acc::OpenFile handle(CM_open(u(directory), "rb"));
    char buffer[1];
    EXPECT_EQ(CM_read(handle.handle(), 1, buffer), 0);
    EXPECT_TRUE(acc::stream_failed(handle.handle()));
}

TEST_F(Files, copies) {
    Bytes data;
    for (unsigned i = 0; i < 200001; ++i) data += static_cast<char>(i * i >> 3);
    const std::string source_name = file("source", data);
    constexpr unsigned all = 0xFFFFFFFF;
    for (const unsigned count : {0U, 1U, 65536U, 65537U, 199998U, 199999U, 200000U, all}) {
        SCOPED_TRACE(count);
        acc::OpenFile source(CM_open(u(source_name), "rb"));
        acc::OpenFile target(CM_create(u(path("target"))));
        ASSERT_EQ(CM_seek(source.handle(), 2, 0), 0);
        EXPECT_EQ(count == all ? CM_CopyFile(target.handle(), source.handle()) : CM_CopyFilen(target.handle(), source.handle(), count), 0);
        EXPECT_EQ(target.close(), 0);
        EXPECT_TRUE(content(path("target")) == data.substr(2, count));
    }
    const acc::OpenFile source(CM_open(u(source_name), "rb"));
    EXPECT_EQ(CM_CopyFile(source.handle(), source.handle()), -1);
    EXPECT_EQ(CM_CopyFilen(-1, source.handle(), 1), -1);
}

TEST_F(Files, new_files_replace_nothing) {
    std::string name = path("new_XXXXXX");
    acc::OpenFile exclusive(acc::create_exclusive(reinterpret_cast<unsigned char *>(name.data())));
    ASSERT_TRUE(exclusive);
    EXPECT_EQ(CM_write(exclusive.handle(), 1, "x"), 1);
    EXPECT_EQ(acc::sync(exclusive.handle()), 0);
    EXPECT_EQ(content(name), "x");
    struct stat status;
    ASSERT_EQ(stat(name.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);

    std::string missing = path("missing/new_XXXXXX");
    EXPECT_EQ(acc::create_exclusive(reinterpret_cast<unsigned char *>(missing.data())), -1);
    EXPECT_EQ(acc::create_new(u(file("old", "kept")), 0644), -1);
    EXPECT_EQ(content(path("old")), "kept");
    std::filesystem::create_symlink(path("nowhere"), path("dangling"));
    EXPECT_EQ(acc::create_new(u(path("dangling")), 0644), -1);
    EXPECT_TRUE(acc::OpenFile(acc::create_new(u(path("fresh")), 0644)));

    EXPECT_EQ(acc::rename_file(u(name), u(path("old"))), 0);
    EXPECT_EQ(content(path("old")), "x");
    EXPECT_EQ(acc::rename_file(u(name), u(path("old"))), -1);
    EXPECT_EQ(acc::sync_directory(u(directory)), 0);
    EXPECT_EQ(acc::sync_directory(u(path("old"))), -1);
}

TEST_F(Files, faults_look_like_the_real_thing) {
    const std::string name = file("a", "kept");
    const std::string written = path("written");
    const int handle = CM_create(u(written));
    ASSERT_GT(handle, 0);
    char buffer[4];
    {
        const Fault fault(Operation::open);
        std::string made = path("made_XXXXXX");
        EXPECT_EQ(CM_open(u(name), "rb"), -1);
        EXPECT_EQ(CM_create(u(name)), -1);
        EXPECT_EQ(acc::create_new(u(path("made")), 0600), -1);
        EXPECT_EQ(acc::create_exclusive(reinterpret_cast<unsigned char *>(made.data())), -1);
    }
    {
        const Fault fault(Operation::remove);
        EXPECT_EQ(CM_remove(u(name)), -1);
    }
    {
        const Fault fault(Operation::rename);
        EXPECT_EQ(acc::rename_file(u(name), u(path("b"))), -1);
    }
    EXPECT_EQ(content(name), "kept");
    EXPECT_FALSE(std::filesystem::exists(path("made")));
    {
        const Fault fault(Operation::sync);
        EXPECT_EQ(acc::sync(handle), -1);
        EXPECT_EQ(acc::sync_directory(u(directory)), -1);
        EXPECT_FALSE(acc::stream_failed(handle));
    }
    {
        const Fault fault(Operation::read);
        const acc::OpenFile source(CM_open(u(name), "rb"));
        EXPECT_EQ(CM_read(source.handle(), 4, buffer), 0);
        EXPECT_TRUE(acc::stream_failed(source.handle()));
    }
    {
        const Fault fault(Operation::write);
        EXPECT_EQ(CM_write(handle, 4, "abcd"), -1);
        EXPECT_TRUE(acc::stream_failed(handle));
    }
    const Fault fault(Operation::flush);
    EXPECT_EQ(acc::flush(handle), -1);
    EXPECT_EQ(CM_close(handle), -1);
    EXPECT_EQ(acc::stream_of(handle), nullptr);
    EXPECT_EQ(content(written), "ab");
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
    std::vector<std::string> errors(2);
    const auto work = [&](std::size_t number) {
        const std::string name = path(number == 0 ? "first" : "second");
        for (int round = 0; round < 300; ++round) {
            const Bytes data(1000, static_cast<char>((number == 0 ? 'a' : 'n') + round % 13));
            Bytes back(1000, '.');
            const int handle = CM_create(u(name));
            if (CM_write(handle, 1000, data.data()) != 1000 || CM_seek(handle, 0, 0) != 0 || CM_read(handle, 1000, back.data()) != 1000 ||
                CM_close(handle) != 0 || back != data) {
                errors[number] = "round " + std::to_string(round);
                return;
            }
        }
    };
    std::thread first(work, 0);
    std::thread second(work, 1);
    first.join();
    second.join();
    EXPECT_EQ(errors, std::vector<std::string>(2));
}

TEST(Memory, blocks_are_zero_filled_and_moved_whole) {
    auto *block = static_cast<unsigned char *>(CM_malloc(4));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(hex(Bytes(block, block + 4)), hex(bytes("\0\0\0\0")));
    CM_memfill(block, 'x', 4);
    {
        const Fault fault(Operation::heap);
        EXPECT_EQ(CM_malloc(1), nullptr);
        EXPECT_EQ(CM_realloc(block, 4, 8), nullptr);
        EXPECT_FALSE(acc::HeapBlock<int>::allocate(1));
    }
    block = static_cast<unsigned char *>(CM_realloc(block, 4, 8));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(hex(Bytes(block, block + 8)), hex(bytes("xxxx\0\0\0\0")));
    block = static_cast<unsigned char *>(CM_realloc(block, 8, 2));
    EXPECT_EQ(hex(Bytes(block, block + 2)), hex("xx"));
    CM_free(block);
    CM_free(nullptr);
    block = static_cast<unsigned char *>(CM_realloc(nullptr, 0, 1));
    EXPECT_NE(block, nullptr);
    CM_free(block);
    EXPECT_FALSE(acc::HeapBlock<int>::allocate(0x40000001));
}

TEST(Memory, areas) {
    Bytes a = "abcdef";
    Bytes b = "ABCDEF";
    CM_memchg(a.data(), b.data(), 3);
    CM_memchg(a.data(), b.data(), 0);
    CM_memchg(a.data(), b.data(), -2);
    EXPECT_EQ(a + b, "ABCdefabcDEF");
    EXPECT_EQ(CM_memmove(a.data() + 1, a.data(), 5), a.data() + 1);
    EXPECT_EQ(a, "AABCde");
    CM_memcpy(a.data(), b.data(), 2);
    CM_memzero(a.data() + 3, 2);
    EXPECT_EQ(hex(a), hex(bytes("abB\0\0e")));
}

} // namespace
