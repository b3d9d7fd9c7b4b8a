// The commands that move in the lists: cursor arithmetic on the record, and positioning
// by the engine where contents change.
#include <algorithm>
#include <cstring>

#include "common/acccom.h"
#include "record/cursor.h"
#include "record/message.h"
#include "sym/engine.h"

namespace {

unsigned char m_ucWorkBuff[1024]; // path of the title to descend into

void mark_lists(Accdata *record) {
    record->wDataStatus = ACCDATA_LIST;
    record->wDataUpdate = ACCDATA_LIST;
}

/** Runs one cursor movement of the current list. */
int move_cursor(Accdata *record, bool (*move)(ListBox &)) {
    ListBox *list = acc::current_list(record);
    if (!list || !move(*list)) return ACC_RET_NONE;
    mark_lists(record);
    return ACC_RET_OK;
}

/** Runs one page movement, after which the lists are refilled. */
int move_page(Accdata *record, bool (*move)(ListBox &)) {
    ListBox *list = acc::current_list(record);
    if (!list || !move(*list)) return ACC_RET_NONE;
    const int result = SYM_Reflesh(record);
    if (result == ACC_RET_OK) mark_lists(record);
    return result;
}

unsigned short first_two_bytes(const unsigned char *bytes) {
    return static_cast<unsigned short>(bytes[0] << 8 | bytes[1]);
}

} // namespace

int ACC_Sym_NextItemProc(Accdata *record) {
    return move_cursor(record, acc::move_to_next_item);
}

int ACC_Sym_BeforeItemProc(Accdata *record) {
    return move_cursor(record, acc::move_to_previous_item);
}

int ACC_Sym_NextBlockProc(Accdata *record) {
    return move_page(record, acc::move_to_next_page);
}

int ACC_Sym_BeforeBlockProc(Accdata *record) {
    return move_page(record, acc::move_to_previous_page);
}

int ACC_Sym_RightItemProc(Accdata *record) {
    const ListBox *list = acc::current_list(record);
    if (!list || record->wCurrentList == ACC_LISTBOX_MAX) return ACC_RET_NONE;
    const int index = acc::current_item(*list);
    if (index < 0 || !(list->lpchLBListInfo[index] & LBINFO_TITLE)) return ACC_RET_NONE;
    // A title item carries its full path. It is copied: positioning refills this list.
    const unsigned char *path = acc::item_text(*list, index);
    const std::size_t bytes =
        std::min(static_cast<std::size_t>(CM_lstrlen(path)), sizeof m_ucWorkBuff - 1);
    std::memcpy(m_ucWorkBuff, path, bytes);
    m_ucWorkBuff[bytes] = 0;
    ++record->wCurrentList;
    if (SYM_SetDataPos(record, m_ucWorkBuff) != ACC_RET_NOTFOUND) mark_lists(record);
    return ACC_RET_OK;
}

int ACC_Sym_LeftItemProc(Accdata *record) {
    if (!acc::current_list(record) || record->wCurrentList == 1) return ACC_RET_NONE;
    --record->wCurrentList;
    mark_lists(record);
    return ACC_RET_OK;
}

int ACC_Sym_DecisionProc(Accdata *record) {
    const ListBox *list = acc::current_list(record);
    const unsigned char *symbol = list ? acc::current_symbol(*list) : nullptr;
    if (!symbol) return ACC_RET_NONE;
    record->wDataStatus |= ACCDATA_RESULT;
    // lpchResult is three bytes; a host may have left anything in them.
    if (std::memcmp(symbol, record->lpchResult, ACC_SIZE_RESULT) == 0) {
        record->wDataUpdate = 0;
        return ACC_RET_OK;
    }
    CM_strcpy(record->lpchResult, symbol);
    record->cchResult = static_cast<unsigned short>(CM_strlen(symbol));
    record->wDataUpdate |= ACCDATA_RESULT;
    return ACC_RET_OK;
}

int ACC_Sym_SetPosProc(Accdata *record) {
    if (!acc::current_list(record)) return ACC_RET_NONE;
    if (!record->lpchString1) return acc::fail(record, acc::Message::memory_not_allocated);
    return SYM_SetDataPos(record, record->lpchString1);
}

int ACC_Sym_SetAttribute(Accdata *record) {
    // Without an open file there is nothing to refill, so any wCurrentList will do.
    if (acc::is_file_open() && !acc::current_list(record)) return ACC_RET_NONE;
    if (!record->lpchString1 || !record->lpchString2 || !record->lpchString3 ||
        !record->lpchString4) {
        return acc::fail(record, acc::Message::memory_not_allocated);
    }
    const unsigned short items_per_page = first_two_bytes(record->lpchString2);
    const unsigned short header_length = first_two_bytes(record->lpchString3);
    const unsigned short item_length = first_two_bytes(record->lpchString4);
    for (ListBox &list : record->tListBox) {
        if (list.lpchLBTitle) CM_strcpy(list.lpchLBTitle, record->lpchString1);
        list.cchLBItemNumMax = items_per_page;
        list.cchLBItemHead = header_length;
        list.cchLBItemLenMax = item_length;
    }
    SYM_SetBlockLength(items_per_page);
    SYM_SetHeaderLength(header_length);
    SYM_SetItemLength(item_length);
    return SYM_Reflesh(record);
}
