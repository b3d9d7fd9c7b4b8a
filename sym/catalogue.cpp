#include "sym/catalogue.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "common/acccom.h"
#include "common/directory.h"
#include "common/stream.h"
#include "record/item_list.h"
#include "record/message.h"

int m_lSymSVValue;
int m_lSymSVBuffSize;

namespace acc {

SymFileListEntry *m_lpucSymFileList;

namespace {

int m_lpucSymFileList_size; // bytes allocated; doubled when they are used up

// Entries that stand before the first thing that the last scan missed; all of them, also
// those that are appended later, when it missed nothing. Without a scan nothing is certain.
int certain_entries = 0;

constexpr int entry_bytes = static_cast<int>(sizeof(SymFileListEntry));
constexpr int head_bytes = 1023; // how much of a file is read to learn its title

void note_miss() {
    certain_entries = std::min(certain_entries, m_lSymSVValue);
}

/** Whether a file that could not be opened, for that reason, is none that the scan missed. */
bool is_no_miss(int reason) {
    return reason == ENOENT || reason == ENOTDIR || reason == ELOOP || // gone, or a link to nowhere
           reason == EISDIR || reason == ENXIO;                        // no regular file
}

std::span<const SymFileListEntry> entries() {
    return {m_lpucSymFileList, static_cast<std::size_t>(m_lSymSVValue)};
}

/** Whether a file's path holds "@", and the number behind the last one. */
bool carries_number(const SymFileListEntry &entry, int &number) {
    static constexpr unsigned char mark[] = "@";
    const unsigned char *at = CM_strpbrke(entry.ucFileName, mark);
    if (!at) return false;
    unsigned char digits[8] = {};
    for (int k = 0; k < 7 && at[1 + k]; ++k) digits[k] = at[1 + k];
    number = CM_atol(digits);
    return true;
}

/** What the head of a file says: its text, and the file title in it. */
struct Head {
    HeapBlock<unsigned char> text; // empty without memory
    Range title;
    bool is_symbol_file = false;
};

/** @param raw  the first bytes of the file, head_bytes at most, and a NUL */
Head read_head(const unsigned char *raw) {
    Head head{HeapBlock<unsigned char>(CM_euc2sjis(raw)), {}};
    if (!head.text) return head;
    const Text text(head.text.get(), static_cast<std::size_t>(CM_lstrlen(head.text.get())));
    head.is_symbol_file = has_symbol_header(text) && find_file_title(text, head_bytes, head.title);
    return head;
}

/**
 * Adds one file.
 * @param raw  its head, with a NUL behind it
 * @return     0; -1 when it is no symbol file or does not fit its entry
 */
int SymFileListUpProc(const unsigned char *path, const unsigned char *raw) {
    const Head head = read_head(raw);
    if (!head.text) note_miss();
    if (!head.is_symbol_file || head.title.length >= sizeof(SymFileListEntry::ucTitle)) return -1;
    const int added =
        SymMemTableMakeProc(path, {head.text.get() + head.title.offset, head.title.length});
    if (added != 0) note_miss();
    return added;
}

/** Adds the symbol files of one directory, given with its "/". @return 0, or -1 */
int SymGetFileTitleSub(const unsigned char *directory) {
    static constexpr unsigned char extension[] = ".kig";
    DirectoryListing listing(directory);
    if (!listing) return -1;
    const std::size_t directory_bytes = static_cast<std::size_t>(CM_lstrlen(directory));
    unsigned char path[sizeof(SymFileListEntry::ucFileName)], raw[head_bytes + 1];
    while (const unsigned char *name = listing.next()) {
        if (!CM_strpbrke(name, extension)) continue;
        const std::size_t name_bytes = static_cast<std::size_t>(CM_lstrlen(name));
        if (directory_bytes + name_bytes >= sizeof path) continue;
        std::memcpy(path, directory, directory_bytes);
        std::memcpy(path + directory_bytes, name, name_bytes + 1);
        const int count = listing.read_head(raw, head_bytes);
        if (count < 0 && !is_no_miss(errno)) note_miss();
        if (count < 0) continue;
        raw[count] = 0;
        SymFileListUpProc(path, raw);
    }
    if (listing.failed()) note_miss();
    return 0;
}

} // namespace

int SymMemTableMakeProc(const unsigned char *path, Text title) {
    if (m_lSymSVBuffSize == m_lpucSymFileList_size) {
        if (m_lpucSymFileList_size > INT32_MAX / 2) return -1;
        const int larger = std::max(entry_bytes, 2 * m_lpucSymFileList_size);
        void *table = m_lpucSymFileList
                          ? CM_realloc(m_lpucSymFileList, static_cast<unsigned>(m_lSymSVBuffSize),
                                       static_cast<unsigned>(larger))
                          : CM_malloc(static_cast<unsigned>(larger));
        if (!table) return -1;
        m_lpucSymFileList = static_cast<SymFileListEntry *>(table);
        m_lpucSymFileList_size = larger;
    }
    SymFileListEntry &entry = m_lpucSymFileList[m_lSymSVValue];
    CM_strcpy(entry.ucFileName, path);
    std::memcpy(entry.ucTitle, title.data(), title.size());
    entry.ucTitle[title.size()] = 0;
    ++m_lSymSVValue;
    m_lSymSVBuffSize += entry_bytes;
    return 0;
}

void SymInitFileTable() {
    CM_free(m_lpucSymFileList);
    m_lpucSymFileList = nullptr;
    m_lpucSymFileList_size = 0;
    m_lSymSVValue = 0;
    m_lSymSVBuffSize = 0;
}

int SymGetFileTitle() {
    if (SymGetFileTitleSub(m_ucZikProgDir) != 0) {
        // Before the first open there are no directories that could hold anything.
        if (m_ucZikProgDir[0] || m_ucZikCommonDir[0]) note_miss();
        return -1;
    }
    if (SymGetFileTitleSub(m_ucZikCommonDir) != 0 && m_ucZikCommonDir[0] && errno != ENOENT) {
        note_miss();
    }
    return 0;
}

int rescan_catalogue() {
    SymInitFileTable();
    certain_entries = INT32_MAX;
    return SymGetFileTitle();
}

const SymFileListEntry *SymMemTableTitleSearchProc(const unsigned char *title) {
    for (const SymFileListEntry &entry : entries()) {
        if (CM_strcmp(entry.ucTitle, title) == 0) return &entry;
    }
    return nullptr;
}

bool search_is_certain(const SymFileListEntry *found) {
    return found ? found - m_lpucSymFileList < certain_entries : certain_entries == INT32_MAX;
}

void SymMemTableDelProc(const SymFileListEntry *entry) {
    SymFileListEntry *place = m_lpucSymFileList + (entry - m_lpucSymFileList);
    --m_lSymSVValue;
    m_lSymSVBuffSize -= entry_bytes;
    const SymFileListEntry *end = m_lpucSymFileList + m_lSymSVValue;
    std::memmove(place, place + 1, static_cast<std::size_t>(end - place) * sizeof *place);
}

int SymGetFreeFileNoProc() {
    if (m_lSymSVValue == 0) return 0;
    const auto numbers = HeapBlock<int>::allocate(static_cast<unsigned>(m_lSymSVValue));
    if (!numbers) return -1;
    int count = 0;
    for (const SymFileListEntry &entry : entries()) {
        if (carries_number(entry, numbers[static_cast<std::size_t>(count)])) ++count;
    }
    std::sort(numbers.get(), numbers.get() + count);
    int free = 0;
    while (free < count && numbers[static_cast<std::size_t>(free)] <= free) ++free;
    return free;
}

int next_free_number(int number) {
    const auto is_carried = [&number](const SymFileListEntry &entry) {
        int carried;
        return carries_number(entry, carried) && carried == number;
    };
    do {
        ++number;
    } while (std::any_of(entries().begin(), entries().end(), is_carried));
    return number;
}

std::optional<bool> is_listed_as(const unsigned char *disk, const unsigned char *title) {
    unsigned char raw[head_bytes + 1];
    const int bytes = std::min(CM_lstrlen(disk), head_bytes);
    CM_strncpy(raw, disk, static_cast<short>(bytes));
    const Head head = read_head(raw);
    if (!head.text) return std::nullopt;
    return head.is_symbol_file &&
           head.title.length == static_cast<std::uint32_t>(CM_lstrlen(title)) &&
           std::memcmp(head.text.get() + head.title.offset, title, head.title.length) == 0;
}

bool new_file_path(int number, NewPath &path) {
    if (!m_ucZikCommonDir[0]) return false;
    const int length =
        std::snprintf(reinterpret_cast<char *>(path), sizeof path, "%s@%07ld.kig",
                      reinterpret_cast<const char *>(m_ucZikCommonDir), static_cast<long>(number));
    return length > 0 && static_cast<std::size_t>(length) < sizeof path;
}

} // namespace acc

int SYM_GetFileTitle(Accdata *record) {
    if (!record->lpchString1) return ACC_RET_ERROR;
    record->lpchDisplay[0] = 0;
    if (acc::rescan_catalogue() != 0) return ACC_RET_ERROR;
    record->cchDisplay = 0;
    for (const SymFileListEntry &entry : acc::entries()) {
        if (!acc::append_display(record, entry.ucTitle)) {
            acc::put_message(record, acc::Message::list_box_memory);
            break;
        }
    }
    acc::end_display(record);
    return ACC_RET_OK;
}

int SYM_FileChkProc(Accdata *record) {
    if (!record->lpchString1) return acc::fail(record, acc::Message::memory_not_allocated);
    acc::rescan_catalogue();
    const SymFileListEntry *entry = acc::SymMemTableTitleSearchProc(record->lpchString1);
    if (!entry || !acc::OpenFile(CM_open(entry->ucFileName, "rb"))) {
        return acc::fail(record, acc::Message::file_does_not_exist);
    }
    return ACC_RET_OK;
}
