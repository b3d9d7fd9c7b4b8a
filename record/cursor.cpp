#include "record/cursor.h"

#include <algorithm>

#include "common/acccom.h"
#include "common/item_header.h"

namespace acc {
namespace {

constexpr unsigned short no_item = 65535;

unsigned short item_index(const ListBox &list) {
    if (list.cchLBItemNum == 0) return no_item;
    return static_cast<unsigned short>(list.cchLBItemPageFirst + list.cchLBItemNum - 2);
}

} // namespace

ListBox *current_list(Accdata *record) {
    if (record->wCurrentList < 1 || record->wCurrentList > ACC_LISTBOX_MAX) return nullptr;
    return &record->tListBox[record->wCurrentList - 1];
}

int current_item(const ListBox &list) {
    const unsigned short index = item_index(list);
    return index < list.cchLBItemTotal ? index : -1;
}

unsigned short item_number(const ListBox &list, int index) {
    int titles = 0; // titles stand before the symbols
    while (titles < index && (list.lpchLBListInfo[titles] & LBINFO_TITLE)) ++titles;
    const bool is_title = (list.lpchLBListInfo[index] & LBINFO_TITLE) != 0;
    const int place = is_title ? index : index - titles;
    const int cycle = list.cchLBItemNumMax;
    return static_cast<unsigned short>((cycle == 0 ? place : place % cycle) + 1);
}

unsigned char *item_text(const ListBox &list, int index) {
    unsigned char *item = CM_GetString(list.lpchLBList, index + 1);
    const unsigned header_bytes = item_header_bytes(list.cchLBItemHead, item_number(list, index));
    return item + std::min(header_bytes, static_cast<unsigned>(CM_lstrlen(item)));
}

const unsigned char *current_symbol(const ListBox &list) {
    const int index = current_item(list);
    if (index < 0 || !(list.lpchLBListInfo[index] & LBINFO_SYMBOL)) return nullptr;
    const unsigned char *text = item_text(list, index);
    return CM_lstrlen(text) == 2 ? text : nullptr;
}

bool move_to_next_item(ListBox &list) {
    if (list.cchLBItemNum == 0) {
        if (list.cchLBItemTotal == 0) return false;
        list.cchLBItemPageFirst = 1;
        list.cchLBItemNum = 1;
        return true;
    }
    const int number = list.cchLBItemPageFirst + list.cchLBItemNum - 1;
    if (number >= list.cchLBItemTotal) return false;
    if (list.cchLBItemNumMax != 0 && list.cchLBItemNum >= list.cchLBItemNumMax) return false;
    ++list.cchLBItemNum;
    return true;
}

bool move_to_previous_item(ListBox &list) {
    if (list.cchLBItemNum == 0) return false;
    if (list.cchLBItemNum > 1) {
        --list.cchLBItemNum;
        return true;
    }
    // A list that was paged before and no longer is: its page may start anywhere.
    if (list.cchLBItemNumMax != 0 || list.cchLBItemPageFirst <= 1) return false;
    --list.cchLBItemPageFirst;
    return true;
}

bool move_to_next_page(ListBox &list) {
    if (list.cchLBItemNumMax == 0) return false;
    const int first = list.cchLBItemPageFirst + list.cchLBItemNumMax;
    if (first > list.cchLBItemTotal) return false;
    list.cchLBItemPageFirst = static_cast<unsigned short>(first);
    list.cchLBItemNum = 1;
    return true;
}

bool move_to_previous_page(ListBox &list) {
    if (list.cchLBItemNumMax == 0 || list.cchLBItemPageFirst <= 1) return false;
    const int first = list.cchLBItemPageFirst - list.cchLBItemNumMax;
    list.cchLBItemPageFirst = static_cast<unsigned short>(first < 1 ? 1 : first);
    list.cchLBItemNum = 1;
    return true;
}

} // namespace acc

unsigned short ACC_Sym_GetLBIndexProc(Accdata *record, unsigned short list_index) {
    return acc::item_index(record->tListBox[list_index]);
}

unsigned char *ACC_Sym_GetLBDataProc(Accdata *record, unsigned short list_index) {
    const ListBox &list = record->tListBox[list_index];
    return acc::item_text(list, acc::item_index(list));
}
