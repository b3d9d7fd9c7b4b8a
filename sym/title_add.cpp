// Adding a title: a new, empty block behind all that lies below its parent.
#include <cstring>

#include "common/acccom.h"
#include "sym/accept.h"
#include "sym/current_title.h"
#include "sym/rewrite.h"
#include "sym/tree.h"

namespace acc {
namespace {

/** Fills the record of a new block that begins at that offset. */
void describe_new_block(std::span<TempInfo> records, std::size_t index, std::uint32_t offset,
                        const unsigned char *title, const unsigned char *path) {
    const std::size_t file_title_bytes = static_cast<std::size_t>(CM_lstrlen(open_title()));
    TempInfo &block = records[index];
    block = {};
    CM_strcpy(block.ucTitle, title);
    CM_strcpy(block.ucPath, path);
    const unsigned char *in_brackets = title_path(block, file_title_bytes);
    block.ulTitlePos = offset;
    block.ulDataPos =
        offset + block_bytes(static_cast<std::uint32_t>(CM_lstrlen(in_brackets)), 0) - 42;
    block.usBlockNo = static_cast<std::uint16_t>(records[index - 1].usBlockNo + 1);
    block.usLevel = level_of(in_brackets);
}

} // namespace
} // namespace acc

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
    if (parent < 0 || open.size() == acc::max_records)
        return acc::fail(record, Message::input_error);

    unsigned char path[acc::max_path + 2 + acc::max_title + 1];
    CM_strcpy(path, list->lpchLBLevel);
    CM_strcat(path, acc::m_ucSymKugiri.data());
    CM_strcat(path, title);
    const auto path_bytes = static_cast<std::uint32_t>(CM_lstrlen(path));
    if (path_bytes > acc::max_path) return acc::fail(record, Message::input_error);
    if (acc::SymGetIndex2(open, path) >= 0) return acc::fail(record, Message::title_exists);

    const std::size_t index = acc::insertion_index(open, static_cast<std::size_t>(parent));
    const std::uint32_t offset =
        index == 1 ? acc::name_line_end() : acc::block_end(open[index - 1]);
    if (offset == 0) return acc::fail(record, Message::writing_failed);
    acc::Rewrite rewrite(record, Message::out_of_memory, 1);
    if (!rewrite) return ACC_RET_ERROR;
    rewrite.insert_record(index);
    acc::describe_new_block(rewrite.records(), index, offset, title, path);
    const unsigned char *in_brackets = acc::title_path(
        rewrite.records()[index], static_cast<std::size_t>(CM_lstrlen(acc::open_title())));
    acc::move_blocks(rewrite.records().subspan(index + 1),
                     acc::block_bytes(static_cast<std::uint32_t>(CM_lstrlen(in_brackets)), 0));

    rewrite.begin();
    rewrite.copy_up_to(offset);
    rewrite.write_block_head(in_brackets);
    rewrite.write_hyphen_line();
    rewrite.copy_rest();
    return rewrite.install();
}
