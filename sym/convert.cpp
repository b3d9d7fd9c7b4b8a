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
#include "common/whole_file.h"
#include "record/message.h"
#include "sym/catalogue.h"
#include "sym/develop.h"
#include "sym/old_file.h"
#include "sym/read_back.h"
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
        for (; new_file_path(number, path_); number = next_free_number(number)) {
            errno = 0;
            file = OpenFile(create_new(path_, 0600));
            if (file || errno != EEXIST) break;
        }
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

WholeFile read_whole(const unsigned char *path) {
    return read_to_end(OpenFile(CM_open(path, "rb")).handle(), most_text);
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
        offset = block.ulDataPos + 2 * block.ulDataLen + hyphen_line_bytes;
    }
    return offset == end;
}

/** Develops the scratch copy with the converted blocks behind its last one, and installs that. */
bool AddCovTempFile(const unsigned char *copy_path, const unsigned char *converted_path) {
    const WholeFile copy = read_whole(copy_path);
    const WholeFile converted = read_whole(converted_path);
    if (!copy || !converted) return false;
    const Records before = open_records();
    const std::uint32_t offset = before.size() == 1 ? name_line_end() : block_end(before.back());
    const auto joined = HeapBlock<unsigned char>::allocate(copy.length + converted.length);
    if (!joined || offset == 0 || offset > copy.length) return false;
    std::memcpy(joined.get(), copy.bytes.get(), offset);
    std::memcpy(joined.get() + offset, converted.bytes.get(), converted.length);
    std::memcpy(joined.get() + offset + converted.length, copy.bytes.get() + offset,
                copy.length - offset);

    WorkingState state;
    const Range title = {before[0].ulTitlePos,
                         static_cast<std::uint32_t>(CM_lstrlen(before[0].ucTitle))};
    const Develop developed =
        SymTempDevelop({joined.get(), copy.length + converted.length}, title, state);
    // The open file may have titles too deep to be opened again, which were added to it.
    if ((developed != Develop::done && developed != Develop::too_deep) ||
        !is_as_meant(state.records(), offset, converted.length)) {
        return false;
    }
    state.install();
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
    if (OldDataConvert(old.ucFullName, converted.path()) != 0 || number < 0) {
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
