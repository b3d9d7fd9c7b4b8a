// Saving the open file to disk, and deleting files from it.
#include <optional>

#include "common/acccom.h"
#include "common/save_file.h"
#include "common/whole_file.h"
#include "record/message.h"
#include "sym/catalogue.h"
#include "sym/read_back.h"
#include "sym/title_rename.h"

namespace acc {
namespace {

/** What a save writes. */
using DiskForm = HeapBlock<unsigned char>;

/**
 * Makes the disk form of the open file's text, and looks at it as an open would: it must hold
 * the titles and the symbols of the index.
 *
 * @return nothing when done; else why nothing can be written: 7 the temp file cannot be read, 8
 * something would be lost, 11 no memory
 */
std::optional<Message> make_disk_form(DiskForm &disk) {
    const int handle = g_tAccFile[1].hFile;
    if (m_bTextCut) return Message::writing_failed;
    if (CM_seek(handle, static_cast<int>(m_tTempIndex.ulTextPos), 0) != 0) {
        return Message::reading_failed;
    }
    const WholeFile text = read_to_end(handle, most_text);
    if (text.result == WholeFile::Result::no_memory) return Message::out_of_memory;
    if (!text) return Message::reading_failed;
    disk.reset(CM_sjis2euc(text.bytes.get()));
    const HeapBlock<unsigned char> again(disk ? CM_euc2sjis(disk.get()) : nullptr);
    if (!again) return Message::out_of_memory;
    const Text read{again.get(), static_cast<std::size_t>(CM_lstrlen(again.get()))};
    const std::optional<bool> listed = is_listed_as(disk.get(), open_title());
    if (!listed) return Message::out_of_memory;
    if (!*listed || !reads_as(read, open_records(), {text.bytes.get(), text.length})) {
        return Message::writing_failed;
    }
    return std::nullopt;
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
    for (; new_file_path(number, path); number = next_free_number(number)) {
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
    if (!acc::search_is_certain(entry)) return acc::fail(record, Message::reading_failed);
    int number = 0;
    if (!entry) {
        if (acc::SymMainTitleChg(record) != ACC_RET_OK) return ACC_RET_ERROR;
        number = acc::SymGetFreeFileNoProc();
        if (number < 0) return acc::fail(record, Message::out_of_memory);
    }
    acc::DiskForm bytes;
    if (const auto failure = acc::make_disk_form(bytes)) return acc::fail(record, *failure);
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
    if (!acc::search_is_certain(entry)) return acc::fail(record, Message::reading_failed);
    CM_remove(entry->ucFileName);
    acc::SymMemTableDelProc(entry);
    return ACC_RET_OK;
}
