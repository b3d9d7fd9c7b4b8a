// The title tree behind the flat list of records, and where blocks lie in the text. The
// one place that knows what lies below a title.
#ifndef ACCSYM_SYM_TREE_H
#define ACCSYM_SYM_TREE_H

#include "sym/engine.h"

namespace acc {

/** A title path without the file title in front: what a title line holds. */
inline const unsigned char *title_path(const TempInfo &record, std::size_t file_title_bytes) {
    return record.ucPath + file_title_bytes + m_ucSymKugiri.size();
}

/** Level that a title path reads back with: 2 and one more for each separator. */
std::uint16_t level_of(const unsigned char *path);

/**
 * Whether a path lies below a title: it is the title's full path, a separator and more. A
 * sibling whose name merely begins with the title's name does not.
 */
bool is_below(const unsigned char *path, const unsigned char *title);

/** Index at which a new child of that record goes: behind all that lies below it. */
std::size_t insertion_index(Records records, std::size_t parent);

/** Bytes of a block as the library writes it. */
constexpr std::uint32_t block_bytes(std::uint32_t title_path_bytes, std::uint32_t data_units) {
    return title_path_bytes + 90 + 2 * data_units;
}

/** Moves blocks by a number of bytes. */
void move_blocks(std::span<TempInfo> records, std::int64_t bytes);

/** Offset in the open file's text behind a block's end line, however long that is; 0 when the
 * temp file cannot be read. */
std::uint32_t block_end(const TempInfo &record);

/** Offset in the open file's text behind the name line; 0 when the temp file cannot be read. */
std::uint32_t name_line_end();

} // namespace acc

#endif
