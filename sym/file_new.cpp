// Creating a symbol file, which lies in the working temp file alone until it is saved.
#include <cstdio>

#include "common/acccom.h"
#include "common/stream.h"
#include "record/item_list.h"
#include "sym/accept.h"
#include "sym/catalogue.h"
#include "sym/current_title.h"

namespace acc {
namespace {

/** Writes header, the file's own record and the two head lines. */
bool write_new_file(const TempIndex &header, const TempInfo &file) {
    unsigned char text[title_offset_as_written + max_file_title + 3];
    const int text_bytes =
        std::snprintf(reinterpret_cast<char *>(text), sizeof text, "%s\r\n%s%s\r\n",
                      reinterpret_cast<const char *>(m_ucSymHeader.data()),
                      reinterpret_cast<const char *>(m_ucSymNameHeader.data()),
                      reinterpret_cast<const char *>(file.ucTitle));
    const int handle = g_tAccFile[1].hFile;
    const auto write = [handle](const void *bytes, int count) {
        return CM_write(handle, count, bytes) == count;
    };
    return write(&header, sizeof header) && write(&file, sizeof file) && write(text, text_bytes) &&
           flush(handle) == 0;
}

} // namespace
} // namespace acc

int SYM_FileNewProc(Accdata *record) {
    using acc::Message;
    const unsigned char *title = record->lpchString1;
    if (!title) return acc::fail(record, Message::memory_not_allocated);
    if (title[0]) {
        const auto verdict = acc::accept_title(title, acc::max_file_title);
        if (verdict != acc::Verdict::accepted) return acc::refuse(record, verdict);
    }
    acc::rescan_catalogue();
    if (acc::SymMemTableTitleSearchProc(title))
        return acc::fail(record, Message::symbol_file_exists);
    if (!acc::catalogue_is_complete()) return acc::fail(record, Message::reading_failed);

    auto file = acc::HeapBlock<TempInfo>::allocate(1);
    auto flags = acc::HeapBlock<unsigned char>::allocate(1); // no child titles
    if (!file || !flags) return -1;
    if (acc::SymTempOpenProc(record) != ACC_RET_OK) return ACC_RET_ERROR;
    file->ulTitlePos = acc::title_offset_as_written;
    file->usBlockNo = 1;
    file->usLevel = 1;
    CM_strcpy(file->ucTitle, title);
    CM_strcpy(file->ucPath, title);
    const TempIndex header = {1, 0, sizeof(TempIndex) + sizeof(TempInfo)};
    if (!acc::write_new_file(header, *file.get())) {
        acc::release_open_file();
        return acc::fail(record, Message::writing_failed);
    }
    acc::install_index(header, std::move(file), std::move(flags));
    acc::m_bEditFlag = 1;

    acc::set_list_geometry(record);
    record->wCurrentList = 1;
    acc::empty_list(record->tListBox[0]);
    acc::show_path(record->tListBox[0], title);
    SYM_SetDataPos(record, acc::open_title());
    return ACC_RET_OK;
}
