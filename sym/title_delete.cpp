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
    if (number < 0) return acc::fail(record, Message::no_such_title);
    if (number == 0) return acc::fail(record, Message::parent_cannot_be_deleted);

    const acc::Records open = acc::open_records();
    const TempInfo &title = open[static_cast<std::size_t>(number)];
    const auto goes = [&](std::size_t i) {
        return i == static_cast<std::size_t>(number) || acc::is_below(open[i].ucPath, title.ucPath);
    };
    acc::Rewrite rewrite(record, Message::out_of_memory);
    if (!rewrite) return ACC_RET_ERROR;
    const auto removed = acc::HeapBlock<acc::Range>::allocate(static_cast<unsigned>(open.size()));
    if (!removed) return acc::fail(record, Message::out_of_memory);
    std::size_t removed_count = 0, kept_count = 1;
    std::int64_t removed_bytes = 0;
    for (std::size_t i = 1; i < open.size(); ++i) {
        if (!goes(i)) {
            rewrite.records()[kept_count] = open[i];
            acc::move_blocks(rewrite.records().subspan(kept_count++, 1), -removed_bytes);
            continue;
        }
        const std::uint32_t end = acc::block_end(open[i]);
        if (end == 0) return acc::fail(record, Message::writing_failed);
        removed[removed_count] = {open[i].ulTitlePos, end - open[i].ulTitlePos};
        removed_bytes += removed[removed_count++].length;
    }
    rewrite.keep_records(kept_count);

    rewrite.begin();
    for (const acc::Range &range : std::span(removed.get(), removed_count)) {
        rewrite.copy_up_to(range.offset);
        rewrite.skip_to(range.offset + range.length);
    }
    rewrite.copy_rest();
    if (rewrite.install() != ACC_RET_OK) return ACC_RET_ERROR;
    --record->wCurrentList;
    return ACC_RET_OK;
}
