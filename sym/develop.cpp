#include "sym/develop.h"

#include <algorithm>
#include <cstring>

#include "common/stream.h"

namespace acc {
namespace {

constexpr auto opening_bracket = sjis<"［">();
constexpr std::uint64_t largest_file = INT32_MAX; // CM_seek's offsets are 32-bit signed

void copy(unsigned char *field, Text text, Range range) {
    std::memcpy(field, text.data() + range.offset, range.length);
    field[range.length] = 0;
}

/** Sets the names of a block's record. @return false when one does not fit its field */
bool set_names(TempInfo &record, Text text, Range file_title, const Block &block) {
    const std::uint32_t path_bytes = file_title.length + 2 + block.path.length;
    if (block.title.length > max_title || path_bytes > max_path) return false;
    copy(record.ucTitle, text, block.title);
    copy(record.ucPath, text, file_title);
    unsigned char *rest = record.ucPath + file_title.length;
    std::memcpy(rest, m_ucSymKugiri.data(), m_ucSymKugiri.size());
    copy(rest + m_ucSymKugiri.size(), text, block.path);
    return true;
}

/** About how many blocks a text has: lines that begin as that of a title does. */
std::size_t likely_blocks(Text text) {
    std::size_t blocks = 0;
    const unsigned char *line = text.data(), *const end = line + text.size();
    while (end - line > 2) {
        if (std::memcmp(line, opening_bracket.data(), opening_bracket.size()) == 0) ++blocks;
        const void *const line_end = std::memchr(line, '\n', static_cast<std::size_t>(end - line));
        if (!line_end) break;
        line = static_cast<const unsigned char *>(line_end) + 1;
    }
    return blocks;
}

/** A record for the file itself and one for each block. */
Develop make_index(Text text, Range title, WorkingState &state, Closing &closing) {
    if (title.length > max_file_title) return Develop::does_not_fit;
    // Room that grows would be copied, and each of its pages made anew.
    if (!state.reserve(std::min<std::size_t>(likely_blocks(text) + 1, max_records))) {
        return Develop::no_memory;
    }
    TempInfo *record = state.append();
    if (!record) return Develop::no_memory;
    record->ulTitlePos = title.offset;
    record->usBlockNo = 1;
    record->usLevel = 1;
    copy(record->ucTitle, text, title);
    copy(record->ucPath, text, title);

    bool deep = false;
    BlockWalk walk(text, title);
    Block block, last;
    while (walk.next(block)) {
        last = block;
        const std::size_t before = state.records().size();
        if (before == max_records) return Develop::does_not_fit;
        record = state.append();
        if (!record) return Develop::no_memory;
        if (!set_names(*record, text, title, block)) return Develop::does_not_fit;
        record->ulTitlePos = block.title_line;
        record->ulDataPos = block.data;
        record->ulDataLen = block.data_units;
        record->ulSymbolNum = block.symbols;
        record->usBlockNo = static_cast<std::uint16_t>(before + 1);
        record->usLevel = block.level;
        deep = deep || block.level > ACC_LISTBOX_MAX;
    }
    const bool has_blocks = record->usBlockNo > 1;
    closing = closing_of(text, title, has_blocks ? &last : nullptr);
    if (has_blocks) {
        record->ulDataPos += closing.data_shift;
        record->ulDataLen += closing.units;
        record->ulSymbolNum += closing.symbols;
    }
    return deep ? Develop::too_deep : Develop::done;
}

} // namespace

Develop SymTempDevelop(Text text, Range title, WorkingState &state) {
    Closing closing;
    const Develop result = make_index(text, title, state, closing);
    if (result != Develop::done && result != Develop::too_deep) return result;
    const std::uint64_t records = state.records().size();
    if (sizeof(TempIndex) + records * sizeof(TempInfo) + text.size() + closing.length >
        largest_file) {
        return Develop::does_not_fit;
    }
    if (!state.create_file()) return Develop::cannot_create;
    if (!state.seek_text() || !write_all(state.handle(), text.data(), text.size()) ||
        !write_all(state.handle(), closing.bytes.data(), closing.length)) {
        return Develop::write_failed;
    }
    switch (state.finish()) {
        case WorkingState::Finish::write_failed:
            return Develop::write_failed;
        case WorkingState::Finish::no_memory:
            return Develop::no_memory;
        case WorkingState::Finish::done:
            break;
    }
    return result;
}

} // namespace acc
