// Filling the list boxes from the index and the temp file.
#include <cstring>

#include "common/acccom.h"
#include "record/cursor.h"
#include "record/item_list.h"
#include "record/message.h"
#include "sym/current_title.h"
#include "sym/tree.h"

namespace acc {
namespace {

enum class Fill { done, cut_short, failed };

/** Appends the child titles of the node of that level and path. */
Fill SymGetIndexTitle(ListBox &list, Records records, unsigned level, const unsigned char *path) {
    ItemNumbers numbers(m_usLBItemNumMax);
    for (std::size_t i = 0; i < records.size(); ++i) {
        const TempInfo &record = records[i];
        if (!is_child(record, level, path)) continue;
        const int attribute = m_lpucChildFlags[i] ? LBINFO_TITLE | LBINFO_CHILD : LBINFO_TITLE;
        if (!append_item(list, m_usLBItemHead, numbers.next(), record.ucPath,
                         static_cast<unsigned char>(attribute))) {
            return Fill::cut_short;
        }
    }
    return Fill::done;
}

/** Appends the symbols of a block, read from the temp file. */
Fill SymGetIndexData(ListBox &list, const TempInfo &record) {
    if (record.ulSymbolNum == 0) return Fill::done;
    const unsigned bytes = 2 * record.ulDataLen;
    const auto data = HeapBlock<unsigned char>::allocate(bytes);
    const int handle = g_tAccFile[1].hFile;
    if (!data ||
        CM_seek(handle, static_cast<int>(m_tTempIndex.ulTextPos + record.ulDataPos), 0) != 0 ||
        CM_read(handle, static_cast<int>(bytes), data.get()) != static_cast<int>(bytes)) {
        return Fill::failed;
    }
    ItemNumbers numbers(m_usLBItemNumMax);
    for (unsigned at = 0; at < bytes; at += 2) {
        const unsigned char symbol[3] = {data[at], data[at + 1], 0};
        if (symbol[0] == '\r' && symbol[1] == '\n') continue;
        if (!append_item(list, m_usLBItemHead, numbers.next(), symbol, LBINFO_SYMBOL)) {
            return Fill::cut_short;
        }
    }
    return Fill::done;
}

/** Refills one list with what lies under a full path. */
Fill SymSetDataPosSub(ListBox &list, const unsigned char *path) {
    empty_list(list);
    const Records records = open_records();
    const int number = SymGetIndex2(records, path);
    if (number < 0) return Fill::failed;
    const TempInfo &node = records[static_cast<std::size_t>(number)];
    const Fill titles = SymGetIndexTitle(list, records, node.usLevel, path);
    return titles == Fill::done ? SymGetIndexData(list, node) : titles;
}

} // namespace
} // namespace acc

int SYM_SetDataPos(Accdata *record, const unsigned char *path) {
    ListBox *list = acc::current_list(record);
    if (!list) return ACC_RET_NONE;
    acc::empty_list(*list);
    list->cchLBItemPageFirst = 0;
    list->cchLBItemNum = 0;
    list->cchLBItemInfoSize = 0;
    list->lpchLBItemInfo[0] = list->lpchLBItemInfo[1] = 0;

    const acc::Records records = acc::open_records();
    if (static_cast<unsigned>(CM_lstrlen(path)) > acc::max_path) return ACC_RET_NOTFOUND;
    if (records.size() <= 1) {
        acc::show_path(*list, path);
        return ACC_RET_ERROR;
    }
    const int number = acc::SymGetIndex2(records, path);
    if (number < 0) return ACC_RET_NOTFOUND;
    const std::uint16_t level = records[static_cast<std::size_t>(number)].usLevel;
    if (level > ACC_LISTBOX_MAX) return ACC_RET_NOTFOUND;
    record->wCurrentList = level;
    acc::show_path(*acc::current_list(record), path);
    return SYM_Reflesh(record);
}

int SYM_Reflesh(Accdata *record) {
    if (!acc::is_file_open()) return ACC_RET_OK;
    ListBox *current = acc::current_list(record);
    if (!current) return ACC_RET_NONE;

    acc::FullPath path;
    const std::size_t path_bytes =
        strnlen(reinterpret_cast<char *>(current->lpchLBLevel), sizeof path);
    if (path_bytes == sizeof path) return acc::fail(record, acc::Message::reading_failed);
    std::memcpy(path, current->lpchLBLevel, path_bytes + 1);

    for (int list = record->wCurrentList - 1; list >= 0; --list) {
        switch (acc::SymSetDataPosSub(record->tListBox[list], path)) {
            case acc::Fill::failed:
                return acc::fail(record, acc::Message::reading_failed);
            case acc::Fill::cut_short:
                acc::put_message(record, acc::Message::list_box_memory);
                break;
            case acc::Fill::done:
                break;
        }
        acc::cut_at_parent(path);
    }
    if (current->cchLBItemNum == 0) {
        current->cchLBItemNum = 1;
        current->cchLBItemPageFirst = 1;
    }
    return ACC_RET_OK;
}
