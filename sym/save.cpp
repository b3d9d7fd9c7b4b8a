// Saving the open file to disk, and deleting files from it.
#include <cstring>

#include "common/acccom.h"
#include "common/save_file.h"
#include "common/stream.h"
#include "record/message.h"
#include "sym/catalogue.h"
#include "sym/title_rename.h"

namespace acc {
namespace {

/**
 * Reads a file from where it stands to its end, through its handle alone: somebody who
 * tidies the temp directory may have removed its name.
 *
 * @param length  set to the bytes read
 * @return        the bytes with a NUL behind them; empty when there is no memory or a read
 *                failed
 */
HeapBlock<unsigned char> SymFileEndRead(const AccFile &file, unsigned &length) {
    unsigned room = 64 * 1024;
    auto bytes = HeapBlock<unsigned char>::allocate(room + 1);
    length = 0;
    while (bytes) {
        const int wanted = static_cast<int>(room - length);
        length += static_cast<unsigned>(CM_read(file.hFile, wanted, bytes.get() + length));
        if (stream_failed(file.hFile)) return {};
        if (length < room) return bytes;
        void *larger = CM_realloc(bytes.get(), room + 1, 2 * room + 1);
        if (!larger) return {};
        static_cast<void>(bytes.release()); // CM_realloc has freed it
        bytes.reset(static_cast<unsigned char *>(larger));
        room *= 2;
    }
    return bytes;
}

/** The open file's text in the disk form; empty as above, or when the temp file was cut. */
HeapBlock<unsigned char> disk_form() {
    const AccFile &temp = g_tAccFile[1];
    if (CM_seek(temp.hFile, static_cast<int>(m_tTempIndex.ulTextPos), 0) != 0) return {};
    unsigned length;
    const auto text = SymFileEndRead(temp, length);
    const TempInfo &last = open_records().back();
    if (!text || length < title_offset_as_written || length < last.ulDataPos + 2 * last.ulDataLen) {
        return {};
    }
    return HeapBlock<unsigned char>(CM_sjis2euc(text.get()));
}

int result_of(Accdata *record, SaveResult result) {
    switch (result) {
        case SaveResult::saved:
            m_bEditFlag = 0;
            return ACC_RET_OK;
        case SaveResult::write_failed:
            return -1;
        case SaveResult::taken:
        case SaveResult::cannot_create:
            break;
    }
    return fail(record, Message::opening_failed);
}

/** Saves under the first free name from that number on, and lists the file. */
int save_new(Accdata *record, int number, std::span<const unsigned char> bytes) {
    NewPath path;
    SaveResult result = SaveResult::cannot_create; // a path too long to be listed
    while (new_file_path(number++, path)) {
        result = create_file(path, bytes);
        if (result != SaveResult::taken) break;
    }
    if (result == SaveResult::saved) {
        SymMemTableMakeProc(path,
                            {open_title(), static_cast<std::size_t>(CM_lstrlen(open_title()))});
    }
    return result_of(record, result);
}

} // namespace
} // namespace acc

int SYM_FileSaveProc(Accdata *record) {
    using acc::Message;
    if (!acc::is_file_open()) return acc::fail(record, Message::opening_failed);
    const unsigned char *title = record->lpchString1;
    if (!title) return acc::fail(record, Message::memory_not_allocated);
    if (CM_strcmp(title, acc::m_ucSymDefault.data()) == 0) {
        return acc::fail(record, Message::cannot_save_standard);
    }
    acc::rescan_catalogue();
    const SymFileListEntry *entry = acc::SymMemTableTitleSearchProc(title);
    int number = 0;
    if (!entry) {
        if (!acc::catalogue_is_complete()) return acc::fail(record, Message::reading_failed);
        if (acc::SymMainTitleChg(record) != ACC_RET_OK) return ACC_RET_ERROR;
        number = acc::SymGetFreeFileNoProc();
        if (number < 0) return acc::fail(record, Message::out_of_memory);
    }
    const auto bytes = acc::disk_form();
    if (!bytes) return acc::fail(record, Message::out_of_memory);
    const std::span<const unsigned char> disk(bytes.get(),
                                              static_cast<std::size_t>(CM_lstrlen(bytes.get())));
    return entry ? acc::result_of(record, acc::replace_file(entry->ucFileName, disk))
                 : acc::save_new(record, number, disk);
}

int SYM_FileDelProc(Accdata *record) {
    using acc::Message;
    if (!record->lpchString1) return acc::fail(record, Message::memory_not_allocated);
    if (CM_strcmp(record->lpchString1, acc::m_ucSymDefault.data()) == 0) {
        return acc::fail(record, Message::cannot_delete_standard);
    }
    acc::rescan_catalogue();
    const SymFileListEntry *entry = acc::SymMemTableTitleSearchProc(record->lpchString1);
    if (!entry) return acc::fail(record, Message::file_does_not_exist);
    CM_remove(entry->ucFileName);
    acc::SymMemTableDelProc(entry);
    return ACC_RET_OK;
}
