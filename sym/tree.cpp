#include "sym/tree.h"

#include <cstring>

#include "common/acccom.h"
#include "common/sjis_text.h"
#include "common/stream.h"

namespace acc {
namespace {

/** Reads the open file's text byte by byte from an offset on. */
class TextReader {
  public:
    explicit TextReader(std::uint32_t offset) : offset_(offset) {
        const int position = static_cast<int>(m_tTempIndex.ulTextPos + offset);
        failed_ = CM_seek(g_tAccFile[1].hFile, position, 0) != 0;
    }

    /** The next byte, or -1 at the end. */
    int next() {
        if (at_ == count_) {
            count_ = CM_read(g_tAccFile[1].hFile, sizeof buffer_, buffer_);
            at_ = 0;
            if (count_ == 0) return -1;
        }
        ++offset_;
        return buffer_[at_++];
    }

    /** Offset of what next() gives next; 0 when a read has failed. */
    std::uint32_t offset() const {
        return failed_ || stream_failed(g_tAccFile[1].hFile) ? 0 : offset_;
    }

  private:
    std::uint32_t offset_;
    bool failed_;
    int at_ = 0, count_ = 0;
    unsigned char buffer_[512];
};

} // namespace

std::uint16_t level_of(const unsigned char *path) {
    std::uint16_t level = 2;
    while ((path = find_char(path, separator))) {
        path += 2;
        ++level;
    }
    return level;
}

bool is_below(const unsigned char *path, const unsigned char *title) {
    const auto begins_with = [](const unsigned char *text, const unsigned char *start,
                                std::size_t bytes) {
        return std::strncmp(reinterpret_cast<const char *>(text),
                            reinterpret_cast<const char *>(start), bytes) == 0;
    };
    const std::size_t bytes = static_cast<std::size_t>(CM_lstrlen(title));
    return begins_with(path, title, bytes) &&
           begins_with(path + bytes, m_ucSymKugiri.data(), m_ucSymKugiri.size());
}

bool cut_at_parent(unsigned char *path) {
    const unsigned char *file_title = open_title();
    if (!is_below(path, file_title)) return false;
    unsigned char *file_title_end = path + CM_lstrlen(file_title);
    unsigned char *cut = find_last_char(file_title_end + m_ucSymKugiri.size(), separator);
    *(cut ? cut : file_title_end) = 0;
    return true;
}

bool make_path(const unsigned char *parent, const unsigned char *title, FullPath &path) {
    const auto bytes = static_cast<unsigned>(CM_lstrlen(parent) + CM_lstrlen(title));
    if (bytes + m_ucSymKugiri.size() > max_path) return false;
    CM_strcpy(path, parent);
    CM_strcat(path, m_ucSymKugiri.data());
    CM_strcat(path, title);
    return true;
}

std::size_t insertion_index(Records records, std::size_t parent) {
    std::size_t last = parent;
    for (std::size_t i = parent + 1; i < records.size(); ++i) {
        if (is_below(records[i].ucPath, records[parent].ucPath)) last = i;
    }
    return last + 1;
}

void move_blocks(std::span<TempInfo> records, std::int64_t bytes) {
    const auto moved = [bytes](std::uint32_t offset) {
        return static_cast<std::uint32_t>(offset + bytes);
    };
    for (TempInfo &record : records) {
        record.ulTitlePos = moved(record.ulTitlePos);
        record.ulDataPos = moved(record.ulDataPos);
    }
}

std::uint32_t block_end(const TempInfo &record) {
    TextReader text(record.ulDataPos + 2 * record.ulDataLen);
    while (text.next() == '-') continue;
    text.next(); // the byte that ended the run was the first of the line's end
    return text.offset();
}

std::uint32_t name_line_end() {
    const TempInfo &file = m_lptTempInfo[0];
    TextReader text(file.ulTitlePos + static_cast<std::uint32_t>(CM_lstrlen(file.ucTitle)));
    int before = 0, byte = text.next();
    while (byte != -1 && !(before == '\r' && byte == '\n')) {
        before = byte;
        byte = text.next();
    }
    return text.offset();
}

} // namespace acc
