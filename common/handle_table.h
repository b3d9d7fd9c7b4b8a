/*
 * handle_table.h - which stream a handle stands for. No lock: a slot is claimed and given
 * up by single atomic steps, so threads may open, use and close files of their own.
 */
#ifndef ACCSYM_COMMON_HANDLE_TABLE_H
#define ACCSYM_COMMON_HANDLE_TABLE_H

#include <cstdio>

namespace acc {

/** Files that can be open at one time. */
inline constexpr int handle_count = 4096;

/**
 * Gives a stream a handle, from then on its owner. A null stream, and any when no handle is
 * free, gives -1; the stream is then closed.
 */
int claim_handle(std::FILE *stream);

/** The stream of a handle; null for a bad one. */
std::FILE *stream_of(int handle);

/** Frees a handle and hands out its stream, which the caller closes; null for a bad one. */
std::FILE *give_up_handle(int handle);

/** Notes that a read, write or flush of a good handle failed. */
void mark_failed(int handle);

/** Forgets that of a good handle. */
void clear_failed(int handle);

/** Whether it was noted; true for a bad handle. */
bool is_marked_failed(int handle);

} // namespace acc

#endif
