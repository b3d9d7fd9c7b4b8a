// What hosts ask about the symbol under the cursor and about the open file.
#include <algorithm>
#include <cstdio>

#include "common/acccom.h"
#include "record/cursor.h"
#include "record/item_list.h"
#include "record/message.h"
#include "sym/engine.h"

namespace {

constexpr int most_kuten_digits = ACC_SIZE_LB_ITEMINFO - 10 - 1;

} // namespace

int SYM_GetInfo(Accdata *record) {
    ListBox *list = acc::current_list(record);
    if (!list) return ACC_RET_NONE;
    const unsigned char *symbol = acc::current_symbol(*list);
    if (!symbol) return ACC_RET_NONE;
    const auto code = static_cast<unsigned short>(symbol[0] << 8 | symbol[1]);
    unsigned char *info = list->lpchLBItemInfo;
    std::snprintf(reinterpret_cast<char *>(info), 5, "%04X", static_cast<unsigned>(code));
    CM_SjisToJis(code, info + 5);
    unsigned char kuten[16];
    const int digits = CM_SjisToKuten(code, kuten);
    // A code far outside JIS X 0208 has more digits than there is room for.
    CM_strncpy(info + 10, kuten, static_cast<short>(std::min(digits, most_kuten_digits)));
    list->cchLBItemInfoSize = 15;
    return ACC_RET_OK;
}

int SYM_GetTreeTitle(Accdata *record) {
    const acc::Records records = acc::open_records();
    if (records.empty()) return ACC_RET_NONE;
    record->lpchDisplay[0] = 0;
    record->cchDisplay = 0;
    for (const TempInfo &block : records) {
        if (!acc::append_display(record, block.ucPath)) {
            acc::put_message(record, acc::Message::list_box_memory);
            break;
        }
    }
    acc::end_display(record);
    return ACC_RET_OK;
}

int SYM_GetEdit(void) {
    return acc::m_bEditFlag == 1 ? ACC_RET_OK : ACC_RET_NONE;
}
