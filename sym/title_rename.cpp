// Renaming the title that the current list shows: the file's own in list 1, else a block's
// with the paths of all that lies below it.
#include "sym/title_rename.h"

#include <cstring>
#include <optional>

#include "common/acccom.h"
#include "common/whole_file.h"
#include "sym/accept.h"
#include "sym/current_title.h"
#include "sym/read_back.h"
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

/**
 * Whether the whole text can be written anew from the index: whatever stands outside of the
 * blocks would be gone then, and must be no title that a person may have meant.
 */
std::optional<Message> may_be_written_anew(Message no_memory) {
    const int handle = g_tAccFile[1].hFile;
    if (CM_seek(handle, static_cast<int>(m_tTempIndex.ulTextPos), 0) != 0) {
        return Message::reading_failed;
    }
    const WholeFile file = read_to_end(handle, most_text);
    if (file.result == WholeFile::Result::no_memory) return no_memory;
    const Range title = {open_records()[0].ulTitlePos, length(open_title())};
    if (!file || has_stray_title({file.bytes.get(), file.length}, title)) {
        return Message::writing_failed;
    }
    return std::nullopt;
}

/** Writes head and blocks anew and notes where they stand; the symbols come from the old text. */
void write_text(Rewrite &rewrite) {
    const Records old = open_records();
    const std::span<TempInfo> records = rewrite.records();
    const std::uint32_t file_title_bytes = length(records[0].ucTitle);
    rewrite.begin();
    rewrite.write(m_ucSymHeader.span());
    rewrite.write(m_ucSymReturn.span());
    rewrite.write(m_ucSymNameHeader.span());
    records[0].ulTitlePos = rewrite.offset();
    rewrite.write({records[0].ucTitle, file_title_bytes});
    rewrite.write(m_ucSymReturn.span());
    for (std::size_t i = 1; i < records.size(); ++i) {
        const unsigned char *in_brackets = title_path(records[i], file_title_bytes);
        records[i].usLevel = level_of(in_brackets);
        records[i].ulTitlePos = rewrite.offset();
        rewrite.write_block_head(in_brackets);
        records[i].ulDataPos = rewrite.offset();
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
    if (number < 0) return fail(record, Message::no_such_title);

    const Records open = open_records();
    const TempInfo &old = open[static_cast<std::size_t>(number)];
    FullPath parent, new_path;
    CM_strcpy(parent, old.ucPath);
    // The file itself has no parent: list 1 renames it.
    if (!cut_at_parent(parent) || !make_path(parent, title, new_path)) {
        return fail(record, Message::input_error);
    }
    if (SymGetIndex2(open, new_path) >= 0) return fail(record, Message::title_exists);

    constexpr Message no_memory = Message::memory_not_allocated;
    if (const auto failure = may_be_written_anew(no_memory)) return fail(record, *failure);
    Rewrite rewrite(record, no_memory);
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
    write_text(rewrite);
    rewrite.check_blocks();
    if (rewrite.install() != ACC_RET_OK) return ACC_RET_ERROR;
    show_path(list, new_path);
    return ACC_RET_OK;
}

} // namespace

int SymMainTitleChg(Accdata *record) {
    const unsigned char *title = record->lpchString1;
    if (!title) return fail(record, Message::memory_not_allocated);
    if (const auto verdict = accept_title(title, max_file_title); verdict != Verdict::accepted) {
        return refuse(record, verdict);
    }
    if (!is_file_open()) return fail(record, Message::no_file_open);
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
