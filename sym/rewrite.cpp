#include "sym/rewrite.h"

#include <cstdio>
#include <cstring>

#include "common/acccom.h"
#include "common/stream.h"
#include "common/whole_file.h"
#include "sym/read_back.h"

namespace acc {
namespace {

// What an edit can add to a file; a temp file must stay below 2 GiB.
constexpr int most_growth = 16 << 20;

int old_handle() {
    return g_tAccFile[1].hFile;
}

} // namespace

Rewrite::Rewrite(Accdata *record, Message no_memory, unsigned room)
    : record_(record), no_memory_(no_memory) {
    const Records open = open_records();
    if (!state_.reserve(open.size() + room)) {
        fail_with(no_memory_);
        return;
    }
    state_.set_count(open.size());
    std::memcpy(state_.records().data(), open.data(), open.size_bytes());
}

void Rewrite::insert_record(std::size_t index) {
    state_.set_count(records().size() + 1);
    const std::span<TempInfo> moved = records().subspan(index);
    std::memmove(moved.data() + 1, moved.data(), moved.size_bytes() - sizeof(TempInfo));
}

void Rewrite::begin() {
    if (CM_stat(g_tAccFile[1].ucFullName) > INT32_MAX - most_growth) {
        return fail_with(Message::writing_failed);
    }
    if (!state_.create_file()) return fail_with(Message::opening_failed);
    if (!state_.seek_text()) fail_with(Message::writing_failed);
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
        const auto piece = bytes < sizeof buffer ? bytes : std::uint32_t{sizeof buffer};
        if (CM_read(old_handle(), static_cast<int>(piece), buffer) != static_cast<int>(piece)) {
            fail_with(Message::writing_failed);
        }
        write({buffer, piece});
        bytes -= piece;
    }
}

void Rewrite::copy_rest() {
    if (seek_old_text() &&
        (CM_CopyFile(state_.handle(), old_handle()) != 0 || stream_failed(old_handle()))) {
        fail_with(Message::writing_failed);
    }
}

void Rewrite::write(Text bytes) {
    new_offset_ += static_cast<std::uint32_t>(bytes.size());
    if (!failed_ && !write_all(state_.handle(), bytes.data(), bytes.size())) {
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

void Rewrite::check_blocks() {
    if (failed_) return;
    if (flush(state_.handle()) != 0 || !state_.seek_text()) {
        return fail_with(Message::writing_failed);
    }
    const WholeFile text = read_to_end(state_.handle(), most_text);
    if (text.result == WholeFile::Result::no_memory) return fail_with(no_memory_);
    if (!text ||
        !reads_as({text.bytes.get(), text.length}, records(), {text.bytes.get(), text.length})) {
        fail_with(Message::writing_failed);
    }
}

int Rewrite::install() {
    if (failed_) return ACC_RET_ERROR;
    switch (state_.finish()) {
        case WorkingState::Finish::write_failed:
            return fail(record_, Message::writing_failed);
        case WorkingState::Finish::no_memory:
            return fail(record_, no_memory_);
        case WorkingState::Finish::done:
            break;
    }
    state_.install();
    m_bEditFlag = 1;
    return ACC_RET_OK;
}

} // namespace acc
