// Adding a title: a new, empty block behind all that lies below its parent.
#include "common/acccom.h"
#include "sym/accept.h"
#include "sym/current_title.h"
#include "sym/rewrite.h"
#include "sym/tree.h"

int SYM_TitleAdd(Accdata *record) {
    using acc::Message;
    ListBox *list = acc::current_list(record);
    if (!list) return ACC_RET_NONE;
    const unsigned char *title = record->lpchString1;
    if (!title) return acc::fail(record, Message::memory_not_allocated);
    if (const auto verdict = acc::accept_title(title, acc::max_title);
        verdict != acc::Verdict::accepted) {
        return acc::refuse(record, verdict);
    }
    const int parent = acc::title_shown(*list);
    const acc::Records open = acc::open_records();
    acc::FullPath path;
    if (parent < 0 || open.size() == acc::max_records ||
        !acc::make_path(list->lpchLBLevel, title, path)) {
        return acc::fail(record, Message::input_error);
    }
    if (acc::SymGetIndex2(open, path) >= 0) return acc::fail(record, Message::title_exists);

    const std::size_t index = acc::insertion_index(open, static_cast<std::size_t>(parent));
    const std::uint32_t offset =
        index == 1 ? acc::name_line_end() : acc::block_end(open[index - 1]);
    if (offset == 0) return acc::fail(record, Message::writing_failed);
    acc::Rewrite rewrite(record, Message::out_of_memory, 1);
    if (!rewrite) return ACC_RET_ERROR;
    rewrite.insert_record(index);
    TempInfo &block = rewrite.records()[index];
    block = {};
    CM_strcpy(block.ucTitle, title);
    CM_strcpy(block.ucPath, path);
    block.usBlockNo = static_cast<std::uint16_t>(open[index - 1].usBlockNo + 1);
    const unsigned char *in_brackets =
        acc::title_path(block, static_cast<std::size_t>(CM_lstrlen(acc::open_title())));
    block.usLevel = acc::level_of(in_brackets);

    rewrite.begin();
    rewrite.copy_up_to(offset);
    block.ulTitlePos = rewrite.offset();
    rewrite.write_block_head(in_brackets);
    block.ulDataPos = rewrite.offset();
    rewrite.write_hyphen_line();
    acc::move_blocks(rewrite.records().subspan(index + 1),
                     std::int64_t{rewrite.offset()} - block.ulTitlePos);
    rewrite.copy_rest();
    return rewrite.install();
}
