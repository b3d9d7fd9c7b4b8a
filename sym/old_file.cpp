#include "sym/old_file.h"

#include <cstdio>

#include "common/acccom.h"
#include "common/stream.h"
#include "common/whole_file.h"
#include "sym/accept.h"
#include "sym/format.h"

namespace acc {
namespace {

constexpr int max_bytes = 32767; // the byte count is 16-bit
constexpr int max_titles = 99;   // one point is the end mark
constexpr int max_title_bytes = 14;
constexpr int key_count = 11;
constexpr int symbols_per_line = 10;

unsigned char *m_lpucSymConvMem;                      // the old file, only while it is converted
std::int16_t m_sSymConvOldFileByte;                   // its bytes
std::int16_t m_sSymConvOldSymList;                    // titles found
std::uint16_t m_usSymConvOldSymPoint[max_titles + 1]; // per title: offset behind its "］"
unsigned char m_cSymConvOldTitle[max_titles + 1][20];

bool stands_at(int position, const unsigned char *character) {
    return position + 1 < m_sSymConvOldFileByte && m_lpucSymConvMem[position] == character[0] &&
           m_lpucSymConvMem[position + 1] == character[1];
}

/** Reads the whole file. @return 0, -1, -2 */
int OpenOldKigouFile(const unsigned char *path) {
    const OpenFile file(open_regular(path, "rb"));
    if (!file) return -1;
    const WholeFile old = read_to_end(file.handle(), max_bytes);
    if (old.result == WholeFile::Result::too_large) return -2;
    // Zeros behind the file's bytes, which match no key and no bracket.
    auto bytes = HeapBlock<unsigned char>::allocate(max_bytes + 1024);
    if (!old || !bytes) return -1;
    CM_memcpy(bytes.get(), old.bytes.get(), old.length);
    m_sSymConvOldFileByte = static_cast<std::int16_t>(old.length);
    m_lpucSymConvMem = bytes.release();
    return 0;
}

/** The code for what an edit would say of a title or of symbols: 0, -1, -2. */
int verdict_code(Verdict verdict) {
    return verdict == Verdict::accepted ? 0 : verdict == Verdict::refused ? -2 : -1;
}

/**
 * Notes every title: a "［" at the beginning of a line with a "］" near enough.
 * @return 0, -1, -2, -4
 */
int OldKigouTitleCheck() {
    static constexpr auto opening = sjis<"［">();
    static constexpr auto closing = sjis<"］">();
    m_sSymConvOldSymList = 0;
    for (int position = 0; position < m_sSymConvOldFileByte; ++position) {
        if (!stands_at(position, opening.data())) continue;
        if (position != 0 && m_lpucSymConvMem[position - 1] != '\n') {
            ++position;
            continue;
        }
        position += 2;
        int bytes = 0;
        while (bytes <= max_title_bytes && !stands_at(position + bytes, closing.data())) ++bytes;
        if (bytes == 0 || bytes > max_title_bytes) continue;
        if (m_sSymConvOldSymList == max_titles) return -2;
        unsigned char *title = m_cSymConvOldTitle[m_sSymConvOldSymList];
        CM_strncpy(title, m_lpucSymConvMem + position, static_cast<short>(bytes));
        if (CM_lstrlen(title) != bytes) return -2; // a NUL
        if (const int refused = verdict_code(accept_title(title, max_title_bytes))) return refused;
        position += bytes + 2;
        m_usSymConvOldSymPoint[m_sSymConvOldSymList++] = static_cast<std::uint16_t>(position);
    }
    m_usSymConvOldSymPoint[m_sSymConvOldSymList] =
        static_cast<std::uint16_t>(m_sSymConvOldFileByte);
    return m_sSymConvOldSymList == 0 ? -4 : 0;
}

/** The data of one block. */
struct BlockData {
    HeapBlock<unsigned char> bytes; // max_data and a NUL
    std::size_t length = 0;

    /** @return false when there is no more room */
    bool append(const unsigned char *two_bytes) {
        if (length + 2 > max_data) return false;
        CM_strncpy(bytes.get() + length, two_bytes, 2);
        length += 2;
        return true;
    }
};

/**
 * Appends the symbols of one key of a title.
 * @return how many, or -2 when there are too many
 */
int OldSListMake(int title, int key_index, BlockData &data) {
    char key[8];
    const auto key_bytes =
        static_cast<short>(std::snprintf(key, sizeof key, "sel%d=", key_index + 1));
    const int end = m_usSymConvOldSymPoint[title + 1];
    int count = 0;
    int position = m_usSymConvOldSymPoint[title];
    while (position < end) {
        if (CM_strnicmp(m_lpucSymConvMem + position, reinterpret_cast<unsigned char *>(key),
                        key_bytes) != 0) {
            ++position;
            continue;
        }
        position += key_bytes;
        if (position >= end) return count;
        for (int taken = 0; taken < symbols_per_line;) {
            const unsigned char byte = m_lpucSymConvMem[position];
            // The last byte of the file is half a symbol at most.
            if (byte == '\r' || byte == '\n' || position + 1 >= m_sSymConvOldFileByte) return count;
            if (byte == ' ') {
                ++position;
                continue;
            }
            if (!data.append(m_lpucSymConvMem + position)) return -2;
            position += 2;
            ++taken;
            ++count;
        }
        ++position;
    }
    return count;
}

/** Gathers the symbols of all keys of a title, a line for each. @return 0, -1, -2 */
int make_data(int title, BlockData &data) {
    data.length = 0;
    data.bytes[0] = 0;
    for (int key = 0; key < key_count; ++key) {
        const int symbols = OldSListMake(title, key, data);
        if (symbols < 0 || (symbols > 0 && !data.append(m_ucSymReturn.data()))) return -2;
    }
    // A NUL among the symbols would end the data early.
    const bool whole = static_cast<std::size_t>(CM_lstrlen(data.bytes.get())) == data.length;
    return whole ? verdict_code(accept_data(data.bytes.get())) : -2;
}

bool write_block(int handle, int title, const BlockData &data) {
    char head[64];
    const int head_bytes =
        std::snprintf(head, sizeof head, reinterpret_cast<const char *>(m_ucSymTitleKakko.data()),
                      reinterpret_cast<const char *>(m_cSymConvOldTitle[title]));
    const auto write_hyphen_line = [handle] {
        return write_all(handle, m_ucSymHaihun.data(), m_ucSymHaihun.size()) &&
               write_all(handle, m_ucSymReturn.data(), m_ucSymReturn.size());
    };
    return write_all(handle, head, static_cast<std::size_t>(head_bytes)) && write_hyphen_line() &&
           write_all(handle, data.bytes.get(), data.length) && write_hyphen_line();
}

/** Writes a block for every title. @return 0, -1, -2, -5, -6 */
int ConvertWriteNewFile(const unsigned char *path) {
    OpenFile file(CM_create(path));
    if (!file) return -5;
    BlockData data{HeapBlock<unsigned char>::allocate(max_data + 1)};
    if (!data.bytes) return -1;
    for (int title = 0; title < m_sSymConvOldSymList; ++title) {
        if (const int result = make_data(title, data); result != 0) return result;
        if (!write_block(file.handle(), title, data)) return -6;
    }
    return file.close() == 0 ? 0 : -6;
}

} // namespace

bool FileNameChk(const unsigned char *name, const unsigned char *extension) {
    static constexpr auto full_width_space = sjis<"　">();
    const int length = CM_lstrlen(name);
    if (length == 0 || length > 256 || name[0] == ' ' ||
        (name[0] == full_width_space.data()[0] && name[1] == full_width_space.data()[1])) {
        return false;
    }
    for (int i = 0; i < length; ++i) {
        if (name[i] == '/') return false;
        if (name[i] == '.') {
            return i <= 252 && length - i >= 4 && CM_strnicmp(name + i, extension, 4) == 0;
        }
    }
    return true;
}

int OldDataConvert(const unsigned char *old_path, const unsigned char *text_path) {
    int result = OpenOldKigouFile(old_path);
    if (result == 0) result = OldKigouTitleCheck();
    if (result == 0) result = ConvertWriteNewFile(text_path);
    CM_free(m_lpucSymConvMem);
    m_lpucSymConvMem = nullptr;
    return result;
}

int old_title_count() {
    return m_sSymConvOldSymList;
}

} // namespace acc
