#include "sym/rewrite.h"

#include <cstdio>
#include <cstring>

#include "common/acccom.h"
#include "common/stream.h"

namespace acc {
namespace {

// What an edit can add to a file; a temp file must stay below 2 GiB.
constexpr int most_growth = 16 << 20;

int old_handle() {
    return g_tAccFile[1].hFile;
}

} // namespace

Rewrite::Rewrite(Accdata *record, Message no_memory, unsigned room)
    : record_(record),
      no_memory_(no_memory),
      header_(m_tTempIndex),
      records_(HeapBlock<TempInfo>::allocate(m_tTempIndex.usCount + room)) {
    if (!records_) {
        fail_with(no_memory_);
        return;
    }
    std::memcpy(records_.get(), m_lptTempInfo, header_.usCount * sizeof(TempInfo));
}

void Rewrite::insert_record(std::size_t index) {
    TempInfo *place = records_.get() + index;
    std::memmove(place + 1, place, (header_.usCount - index) * sizeof(TempInfo));
    ++header_.usCount;
}

void Rewrite::begin() {
    if (CM_stat(g_tAccFile[1].ucFullName) > INT32_MAX - most_growth) {
        return fail_with(Message::writing_failed);
    }
    if (!file_.create()) return fail_with(Message::opening_failed);
    const auto bytes = static_cast<std::uint32_t>(header_.usCount * sizeof(TempInfo));
    header_.ulTextPos = static_cast<std::uint32_t>(sizeof header_) + bytes;
    write({reinterpret_cast<const unsigned char *>(&header_), sizeof header_});
    write({reinterpret_cast<const unsigned char *>(records_.get()), bytes});
}

bool Rewrite::seek_old_text() {
    if (!failed_ &&
        CM_seek(old_handle(), static_cast<int>(m_tTempIndex.ulTextPos + old_offset_), 0) != 0) {
        fail_with(Message::writing_failed);
    }
    return !failed_;
}

void Rewrite::copy(std::uint32_t bytes) {
    unsigned char buffer[16 * 1024];
    seek_old_text();
    old_offset_ += bytes;
    while (!failed_ && bytes > 0) {
        const int piece = static_cast<int>(bytes < sizeof buffer ? bytes : sizeof buffer);
        if (CM_read(old_handle(), piece, buffer) != piece ||
            CM_write(file_.handle(), piece, buffer) != piece) {
            fail_with(Message::writing_failed);
        }
        bytes -= static_cast<std::uint32_t>(piece);
    }
}

void Rewrite::copy_rest() {
    if (seek_old_text() &&
        (CM_CopyFile(file_.handle(), old_handle()) != 0 || stream_failed(old_handle()))) {
        fail_with(Message::writing_failed);
    }
}

void Rewrite::write(Text bytes) {
    const int count = static_cast<int>(bytes.size());
    if (!failed_ && CM_write(file_.handle(), count, bytes.data()) != count) {
        fail_with(Message::writing_failed);
    }
}

void Rewrite::write_block_head(const unsigned char *title_path) {
    unsigned char line[max_path + 16];
    const int length = std::snprintf(reinterpret_cast<char *>(line), sizeof line,
                                     reinterpret_cast<const char *>(m_ucSymTitleKakko.data()),
                                     reinterpret_cast<const char *>(title_path));
    write({line, static_cast<std::size_t>(length)});
    write_hyphen_line();
}

void Rewrite::write_hyphen_line() {
    write(m_ucSymHaihun.span());
    write(m_ucSymReturn.span());
}

int Rewrite::install() {
    if (!failed_ && flush(file_.handle()) != 0) fail_with(Message::writing_failed);
    if (failed_) return ACC_RET_ERROR;
    auto flags = child_flags(records());
    if (!flags) return fail(record_, no_memory_);
    file_.become_working();
    install_index(header_, std::move(records_), std::move(flags));
    m_bEditFlag = 1;
    return ACC_RET_OK;
}

} // namespace acc
