// Renaming the title that the current list shows: the file's own in list 1, else a block's
// with the paths of all that lies below it.
#include "sym/title_rename.h"

#include <cstring>

#include "common/acccom.h"
#include "common/sjis_text.h"
#include "sym/accept.h"
#include "sym/current_title.h"
#include "sym/rewrite.h"
#include "sym/tree.h"

namespace acc {
namespace {

std::uint32_t length(const unsigned char *text) {
    return static_cast<std::uint32_t>(CM_lstrlen(text));
}

/** Replaces the first bytes of a path. @return false when the result is too long */
bool replace_beginning(unsigned char *path, std::uint32_t old_bytes,
                       const unsigned char *beginning) {
    const std::uint32_t new_bytes = length(beginning);
    const std::uint32_t rest_bytes = length(path) - old_bytes;
    if (new_bytes + rest_bytes > max_path) return false;
    std::memmove(path + new_bytes, path + old_bytes, rest_bytes + 1);
    std::memcpy(path, beginning, new_bytes);
    return true;
}

/** Gives every block the place at which it will stand in a text written from the index. */
void place_blocks(std::span<TempInfo> records) {
    const std::uint32_t file_title_bytes = length(records[0].ucTitle);
    records[0].ulTitlePos = title_offset_as_written;
    std::uint32_t offset = title_offset_as_written + file_title_bytes + 2;
    for (TempInfo &block : records.subspan(1)) {
        const unsigned char *in_brackets = title_path(block, file_title_bytes);
        const std::uint32_t bytes = block_bytes(length(in_brackets), block.ulDataLen);
        block.ulTitlePos = offset;
        offset += bytes;
        block.ulDataPos = offset - 42 - 2 * block.ulDataLen;
        block.usLevel = level_of(in_brackets);
    }
}

/** Writes head and blocks anew; the symbols come from where they stood. */
void write_text(Rewrite &rewrite, Records old) {
    const std::span<TempInfo> records = rewrite.records();
    rewrite.begin();
    rewrite.write(m_ucSymHeader.span());
    rewrite.write(m_ucSymReturn.span());
    rewrite.write(m_ucSymNameHeader.span());
    rewrite.write({records[0].ucTitle, length(records[0].ucTitle)});
    rewrite.write(m_ucSymReturn.span());
    for (std::size_t i = 1; i < records.size(); ++i) {
        rewrite.write_block_head(title_path(records[i], length(records[0].ucTitle)));
        rewrite.skip_to(old[i].ulDataPos);
        rewrite.copy(2 * old[i].ulDataLen);
        rewrite.write_hyphen_line();
    }
}

/** Renames a block's title; the list shows it. */
int SymChildTitleChg(Accdata *record, ListBox &list) {
    const unsigned char *title = record->lpchString1;
    if (!title) return fail(record, Message::memory_not_allocated);
    if (const auto verdict = accept_title(title, max_title); verdict != Verdict::accepted) {
        return refuse(record, verdict);
    }
    const int number = title_shown(list);
    if (number < 0) return fail(record, Message::title_exists);
    if (number == 0)
        return fail(record, Message::input_error); // the file itself: list 1 renames it

    const Records open = open_records();
    const TempInfo &old = open[static_cast<std::size_t>(number)];
    unsigned char new_path[max_path + 2 + max_title + 1];
    CM_strcpy(new_path, old.ucPath);
    CM_strcpy(find_last_char(new_path, separator) + 2, title);
    if (length(new_path) > max_path) return fail(record, Message::input_error);
    if (SymGetIndex2(open, new_path) >= 0) return fail(record, Message::title_exists);

    Rewrite rewrite(record, Message::memory_not_allocated);
    if (!rewrite) return ACC_RET_ERROR;
    for (TempInfo &block : rewrite.records()) {
        if (is_below(block.ucPath, old.ucPath) &&
            !replace_beginning(block.ucPath, length(old.ucPath), new_path)) {
            return fail(record, Message::input_error);
        }
    }
    TempInfo &renamed = rewrite.records()[static_cast<std::size_t>(number)];
    CM_strcpy(renamed.ucTitle, title);
    CM_strcpy(renamed.ucPath, new_path);
    place_blocks(rewrite.records());
    write_text(rewrite, open);
    if (rewrite.install() != ACC_RET_OK) return ACC_RET_ERROR;
    show_path(list, new_path);
    return ACC_RET_OK;
}

} // namespace

int SymMainTitleChg(Accdata *record) {
    const unsigned char *title = record->lpchString1;
    if (!title) return fail(record, Message::memory_not_allocated);
    if (!is_file_open()) return fail(record, Message::no_file_open);
    if (const auto verdict = accept_title(title, max_file_title); verdict != Verdict::accepted) {
        return refuse(record, verdict);
    }
    const TempInfo old = open_records()[0];
    if (CM_strcmp(old.ucTitle, title) == 0) {
        put_message(record, Message::title_exists);
        return ACC_RET_OK;
    }

    Rewrite rewrite(record, Message::out_of_memory);
    if (!rewrite) return ACC_RET_ERROR;
    for (TempInfo &block : rewrite.records()) {
        if (!replace_beginning(block.ucPath, length(old.ucPath), title)) {
            return fail(record, Message::input_error);
        }
    }
    CM_strcpy(rewrite.records()[0].ucTitle, title);
    move_blocks(rewrite.records().subspan(1), std::int64_t{length(title)} - length(old.ucTitle));

    rewrite.begin();
    rewrite.copy_up_to(old.ulTitlePos);
    rewrite.write({title, length(title)});
    rewrite.skip_to(old.ulTitlePos + length(old.ucTitle));
    rewrite.copy_rest();
    if (rewrite.install() != ACC_RET_OK) return ACC_RET_ERROR;
    show_path(record->tListBox[0], title);
    return ACC_RET_OK;
}

} // namespace acc

int SYM_TitleChg(Accdata *record) {
    ListBox *list = acc::current_list(record);
    if (!list) return ACC_RET_NONE;
    return record->wCurrentList == 1 ? acc::SymMainTitleChg(record)
                                     : acc::SymChildTitleChg(record, *list);
}
