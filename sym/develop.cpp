// Turning a text into a temp file with an index.
#include <cstring>

#include "common/acccom.h"
#include "common/stream.h"
#include "sym/temp_index.h"

namespace acc {
namespace {

constexpr std::uint64_t largest_file = INT32_MAX; // CM_seek's offsets are 32-bit signed

bool write(int handle, const void *bytes, std::size_t count) {
    const int length = static_cast<int>(count);
    return CM_write(handle, length, bytes) == length;
}

/** Appends one record, counting it in the header. */
Develop add_record(int handle, TempInfo *work, TempIndex *header) {
    if (header->usCount == max_records) return Develop::does_not_fit;
    if (!write(handle, work, sizeof *work)) return Develop::write_failed;
    ++header->usCount;
    header->ulTextPos += static_cast<std::uint32_t>(sizeof *work);
    return Develop::done;
}

void copy(unsigned char *field, Text text, Range range) {
    std::memcpy(field, text.data() + range.offset, range.length);
    field[range.length] = 0;
}

/** Sets the names of a block's record. @return false when one does not fit its field */
bool set_names(TempInfo *work, Text text, Range file_title, const Block &block) {
    const std::uint32_t path_bytes = file_title.length + 2 + block.path.length;
    if (block.title.length > max_title || path_bytes > max_path) return false;
    copy(work->ucTitle, text, block.title);
    copy(work->ucPath, text, file_title);
    unsigned char *rest = work->ucPath + file_title.length;
    std::memcpy(rest, m_ucSymKugiri.data(), 2);
    copy(rest + 2, text, block.path);
    return true;
}

} // namespace

Develop SymTempDevelop(int handle, Text text, Range title, TempInfo *work, TempIndex *header) {
    *header = {0, 0, sizeof(TempIndex)};
    std::memset(work, 0, sizeof *work);
    if (title.length > max_file_title) return Develop::does_not_fit;
    if (CM_seek(handle, sizeof(TempIndex), 0) != 0) return Develop::write_failed;

    work->ulTitlePos = title.offset;
    work->usBlockNo = 1;
    work->usLevel = 1;
    copy(work->ucTitle, text, title);
    copy(work->ucPath, text, title);
    if (Develop result = add_record(handle, work, header); result != Develop::done) return result;

    // A block's record is written when the next block is known, or the text's end: the
    // last one's data may still grow when the text is closed.
    std::uint16_t deepest = 0;
    BlockWalk walk(text, title);
    Block block;
    Closing closing;
    bool more = walk.next(block);
    if (!more) closing = closing_of(text, title, nullptr);
    while (more) {
        const Block current = block;
        more = walk.next(block);
        if (!more) closing = closing_of(text, title, &current);
        if (!set_names(work, text, title, current)) return Develop::does_not_fit;
        work->ulTitlePos = current.title_line;
        work->ulDataPos = current.data + closing.data_shift;
        work->ulDataLen = current.data_units + closing.units;
        work->ulSymbolNum = current.symbols + closing.symbols;
        ++work->usBlockNo;
        work->usLevel = current.level;
        if (current.level > deepest) deepest = current.level;
        if (Develop result = add_record(handle, work, header); result != Develop::done) {
            return result;
        }
    }

    if (header->ulTextPos + std::uint64_t{text.size()} + closing.length > largest_file) {
        return Develop::does_not_fit;
    }
    if (!write(handle, text.data(), text.size()) ||
        !write(handle, closing.bytes.data(), closing.length) || CM_seek(handle, 0, 0) != 0 ||
        !write(handle, header, sizeof *header) || flush(handle) != 0) {
        return Develop::write_failed;
    }
    return deepest > ACC_LISTBOX_MAX ? Develop::too_deep : Develop::done;
}

} // namespace acc
