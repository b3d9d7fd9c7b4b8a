// Deleting a title with all that lies below it. Blocks that stand between stay.
#include "sym/current_title.h"
#include "sym/rewrite.h"
#include "sym/tree.h"

int SYM_TitleDel(Accdata *record) {
    using acc::Message;
    ListBox *list = acc::current_list(record);
    if (!list) return ACC_RET_NONE;
    if (record->wCurrentList == 1) return acc::fail(record, Message::parent_cannot_be_deleted);
    const int number = acc::title_shown(*list);
    if (number < 0) return acc::fail(record, Message::title_exists);
    if (number == 0) return acc::fail(record, Message::parent_cannot_be_deleted);

    const acc::Records open = acc::open_records();
    const TempInfo &title = open[static_cast<std::size_t>(number)];
    const auto goes = [&](std::size_t i) {
        return i == static_cast<std::size_t>(number) || acc::is_below(open[i].ucPath, title.ucPath);
    };
    acc::Rewrite rewrite(record, Message::out_of_memory);
    if (!rewrite) return ACC_RET_ERROR;
    std::size_t kept = 1;
    std::int64_t removed_bytes = 0;
    for (std::size_t i = 1; i < open.size(); ++i) {
        if (goes(i)) {
            removed_bytes += acc::block_end(open[i]) - open[i].ulTitlePos;
        } else {
            rewrite.records()[kept] = open[i];
            acc::move_blocks(rewrite.records().subspan(kept++, 1), -removed_bytes);
        }
    }
    rewrite.keep_records(kept);

    rewrite.begin();
    for (std::size_t i = 1; i < open.size(); ++i) {
        if (!goes(i)) continue;
        rewrite.copy_up_to(open[i].ulTitlePos);
        rewrite.skip_to(acc::block_end(open[i]));
    }
    rewrite.copy_rest();
    if (rewrite.install() != ACC_RET_OK) return ACC_RET_ERROR;
    --record->wCurrentList;
    return ACC_RET_OK;
}
