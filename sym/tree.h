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

/** A full path with its NUL, as a field of the index holds it. */
using FullPath = unsigned char[sizeof(TempInfo::ucPath)];

/**
 * Cuts a full path of the open file at its parent: at the last separator of its titles, the
 * one behind the file title at the first of them. The file title is stepped over: one from a
 * file may hold a separator, or end in half a character that would eat the next one.
 *
 * @return false, and nothing cut, for the file title and for what does not lie below it
 */
bool cut_at_parent(unsigned char *path);

/** The full path of a title below a parent. @return false when it is too long */
bool make_path(const unsigned char *parent, const unsigned char *title, FullPath &path);

/** Index at which a new child of that record goes: behind all that lies below it. */
std::size_t insertion_index(Records records, std::size_t parent);

/** Moves blocks by a number of bytes. */
void move_blocks(std::span<TempInfo> records, std::int64_t bytes);

/** Offset in the open file's text behind a block's end line, however long that is; 0 when the
 * temp file cannot be read. */
std::uint32_t block_end(const TempInfo &record);

/** Offset in the open file's text behind the name line; 0 when the temp file cannot be read. */
std::uint32_t name_line_end();

} // namespace acc

#endif
