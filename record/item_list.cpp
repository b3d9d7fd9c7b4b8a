#include "record/item_list.h"

#include <cstring>

#include "common/acccom.h"
#include "common/item_header.h"

namespace acc {
namespace {

constexpr unsigned longest = 65535; // lengths in the record are 16-bit

} // namespace

void empty_list(ListBox &list) {
    list.cchLBListLen = 0;
    list.cchLBItemTotal = 0;
    list.lpchLBList[0] = list.lpchLBList[1] = 0;
    list.lpchLBListInfo[0] = list.lpchLBListInfo[1] = 0;
}

bool append_item(ListBox &list, unsigned short header_mode, unsigned short number,
                 const unsigned char *text, unsigned char attribute) {
    const unsigned text_bytes = static_cast<unsigned>(CM_lstrlen(text));
    // What CM_LBMakeHeader counts leaves out the NUL in mode 0, and the NUL that
    // follows every item's own in the others.
    const unsigned bytes = item_bytes(header_mode, text_bytes, number) + 1;
    if (list.cchLBListLen + bytes > longest) return false;
    unsigned char *item = list.lpchLBList + list.cchLBListLen;
    CM_LBMakeHeader(header_mode, text, number, item);
    item[bytes - 1] = 0;
    list.cchLBListLen = static_cast<unsigned short>(list.cchLBListLen + bytes);
    list.lpchLBListInfo[list.cchLBItemTotal] = attribute;
    ++list.cchLBItemTotal;
    return true;
}

bool append_display(Accdata *record, const unsigned char *text) {
    const unsigned bytes = static_cast<unsigned>(CM_lstrlen(text)) + 1;
    if (record->cchDisplay + bytes > longest) return false;
    std::memcpy(record->lpchDisplay + record->cchDisplay, text, bytes);
    record->cchDisplay = static_cast<unsigned short>(record->cchDisplay + bytes);
    return true;
}

void end_display(Accdata *record) {
    record->lpchDisplay[record->cchDisplay] = 0;
    record->wDataStatus |= ACCDATA_DISPLAY;
    record->wDataUpdate |= ACCDATA_DISPLAY;
}

} // namespace acc
