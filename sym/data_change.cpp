// Replacing the symbols of a block.
#include "common/acccom.h"
#include "sym/accept.h"
#include "sym/current_title.h"
#include "sym/rewrite.h"
#include "sym/tree.h"

namespace acc {
namespace {

std::uint32_t count_symbols(Text data) {
    std::uint32_t symbols = 0;
    for (std::size_t at = 0; at < data.size(); at += 2) {
        if (data[at] != '\r') ++symbols;
    }
    return symbols;
}

} // namespace
} // namespace acc

int SYM_DataChg(Accdata *record) {
    using acc::Message;
    ListBox *list = acc::current_list(record);
    if (!list) return ACC_RET_NONE;
    if (record->wCurrentList == 1) return acc::fail(record, Message::parent_takes_no_symbols);
    const unsigned char *bytes = record->lpchString1;
    if (!bytes) return acc::fail(record, Message::memory_not_allocated);
    const int number = acc::title_shown(*list);
    if (number < 0) return acc::fail(record, Message::no_such_title);
    if (number == 0) return acc::fail(record, Message::parent_takes_no_symbols);
    if (const auto verdict = acc::accept_data(bytes); verdict != acc::Verdict::accepted) {
        return acc::refuse(record, verdict);
    }

    const acc::Text data(bytes, static_cast<std::size_t>(CM_lstrlen(bytes)));
    const TempInfo old = acc::open_records()[static_cast<std::size_t>(number)];
    acc::Rewrite rewrite(record, Message::out_of_memory);
    if (!rewrite) return ACC_RET_ERROR;
    TempInfo &block = rewrite.records()[static_cast<std::size_t>(number)];
    block.ulDataLen = static_cast<std::uint32_t>(data.size() / 2);
    block.ulSymbolNum = acc::count_symbols(data);
    acc::move_blocks(rewrite.records().subspan(static_cast<std::size_t>(number) + 1),
                     2 * (std::int64_t{block.ulDataLen} - old.ulDataLen));

    rewrite.begin();
    rewrite.copy_up_to(old.ulDataPos);
    rewrite.write(data);
    rewrite.skip_to(old.ulDataPos + 2 * old.ulDataLen);
    rewrite.copy_rest();
    return rewrite.install();
}
