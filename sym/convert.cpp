// Appending the titles of an old-format file to the open file.
//
// Two files exist during a conversion and are removed before it returns: the converted
// text (a temp file) and a scratch copy of the open file's text, under a free name in the
// common directory. The result is developed into a new working temp file.
#include <cerrno>
#include <cstddef>
#include <cstring>

#include "common/acccom.h"
#include "common/stream.h"
#include "record/message.h"
#include "sym/accept.h"
#include "sym/catalogue.h"
#include "sym/old_file.h"
#include "sym/tree.h"

namespace acc {
namespace {

/** The scratch copy: a new file in the common directory, removed at the end. */
class ScratchCopy {
  public:
    ScratchCopy() = default;
    ~ScratchCopy() {
        if (exists_) CM_remove(path_);
    }
    ScratchCopy(const ScratchCopy &) = delete;
    ScratchCopy &operator=(const ScratchCopy &) = delete;

    /** Makes the file under the first free name from that number on. */
    OpenFile make(int number) {
        OpenFile file;
        do {
            if (!new_file_path(number++, path_)) break;
            errno = 0;
            file = OpenFile(create_new(path_, 0600));
        } while (!file && errno == EEXIST);
        exists_ = static_cast<bool>(file);
        return file;
    }

    const unsigned char *path() const { return path_; }

  private:
    NewPath path_;
    bool exists_ = false;
};

/** Copies the open file's text into the scratch copy. */
bool SymConvFileSaveProc(ScratchCopy &copy, int number) {
    OpenFile file = copy.make(number);
    const int working = g_tAccFile[1].hFile;
    return file && CM_seek(working, static_cast<int>(m_tTempIndex.ulTextPos), 0) == 0 &&
           CM_CopyFile(file.handle(), working) == 0 && !stream_failed(working) && file.close() == 0;
}

/** A file read whole. */
struct Contents {
    HeapBlock<unsigned char> bytes; // with a NUL behind them; empty when it cannot be read
    std::uint32_t length = 0;
    explicit operator bool() const { return static_cast<bool>(bytes); }
};

Contents read_whole(const unsigned char *path) {
    const OpenFile file(CM_open(path, "rb"));
    const int size = file ? CM_stat(path) : 0;
    auto bytes = HeapBlock<unsigned char>::allocate(static_cast<unsigned>(size) + 1);
    if (!file || !bytes || CM_read(file.handle(), size, bytes.get()) != size) return {};
    return {std::move(bytes), static_cast<std::uint32_t>(size)};
}

/** Whether a text comes back the same from a save. */
bool can_be_saved(const unsigned char *path) {
    const Contents converted = read_whole(path);
    return converted &&
           static_cast<std::uint32_t>(CM_lstrlen(converted.bytes.get())) == converted.length &&
           survives_the_disk(converted.bytes.get()) == Verdict::accepted;
}

/**
 * Whether the index holds what it held before and then one top-level block for each old
 * title, back to back in the bytes that were added: no title and no symbol was taken for
 * something else.
 */
bool is_as_meant(Records records, std::uint32_t offset, std::uint32_t added_bytes) {
    const Records before = open_records();
    if (records.size() != before.size() + static_cast<std::size_t>(old_title_count())) return false;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (std::memcmp(&records[i], &before[i], offsetof(TempInfo, usBlockNo)) != 0) return false;
    }
    const std::uint32_t end = offset + added_bytes;
    for (const TempInfo &block : records.subspan(before.size())) {
        if (block.usLevel != 2 || block.ulTitlePos != offset) return false;
        offset = block.ulDataPos + 2 * block.ulDataLen + 42;
    }
    return offset == end;
}

/** Develops the scratch copy with the converted blocks behind its last one, and installs that. */
bool AddCovTempFile(const unsigned char *copy_path, const unsigned char *converted_path) {
    const Contents copy = read_whole(copy_path);
    const Contents converted = read_whole(converted_path);
    if (!copy || !converted) return false;
    const Records before = open_records();
    const std::uint32_t offset = before.size() == 1 ? name_line_end() : block_end(before.back());
    const auto joined = HeapBlock<unsigned char>::allocate(copy.length + converted.length);
    if (!joined || offset == 0 || offset > copy.length) return false;
    std::memcpy(joined.get(), copy.bytes.get(), offset);
    std::memcpy(joined.get() + offset, converted.bytes.get(), converted.length);
    std::memcpy(joined.get() + offset + converted.length, copy.bytes.get() + offset,
                copy.length - offset);

    NewTempFile file;
    TempInfo work;
    TempIndex header;
    const Range title = {before[0].ulTitlePos,
                         static_cast<std::uint32_t>(CM_lstrlen(before[0].ucTitle))};
    const Text text(joined.get(), copy.length + converted.length);
    if (!file.create()) return false;
    const Develop developed = SymTempDevelop(file.handle(), text, title, &work, &header);
    if (developed == Develop::write_failed || developed == Develop::does_not_fit) return false;
    auto records = SymTempIndexRead(file.handle(), header);
    if (!records || !is_as_meant({records.get(), header.usCount}, offset, converted.length))
        return false;
    auto flags = child_flags({records.get(), header.usCount});
    if (!flags) return false;
    file.become_working();
    install_index(header, std::move(records), std::move(flags));
    return true;
}

/** Converts; the messages are those of SYM_FileConv. @return 0, or -1 after setting one */
int SymConvertProc(Accdata *record, const unsigned char *old_path) {
    static constexpr unsigned char extension[] = ".ini";
    const auto failed = [record](Message message) {
        put_message(record, message);
        return -1;
    };
    AccFile old{};
    if (CM_lstrlen(old_path) >= static_cast<int>(sizeof old.ucFullName)) {
        return failed(Message::file_does_not_exist);
    }
    CM_strcpy(old.ucFullName, old_path);
    unsigned char name[sizeof old.ucFullName];
    CM_GetFullPathToFileName(old.ucFullName, name);
    if (!FileNameChk(name, extension)) return failed(Message::file_does_not_exist);

    NewTempFile converted;
    if (!converted.create()) return failed(Message::opening_failed);
    const int number = SymGetFreeFileNoProc();
    if (OldDataConvert(old.ucFullName, converted.path()) != 0 || !can_be_saved(converted.path()) ||
        number < 0) {
        return failed(Message::conversion_failed);
    }
    m_bEditFlag = 1;
    ScratchCopy copy;
    if (!SymConvFileSaveProc(copy, number) || !AddCovTempFile(copy.path(), converted.path())) {
        return failed(Message::conversion_failed);
    }
    return 0;
}

} // namespace
} // namespace acc

int SYM_FileConv(Accdata *record) {
    if (!record->lpchString1) return acc::fail(record, acc::Message::memory_not_allocated);
    if (!acc::is_file_open()) return acc::fail(record, acc::Message::no_file_open);
    return acc::SymConvertProc(record, record->lpchString1) == 0 ? ACC_RET_OK : ACC_RET_ERROR;
}
