#include "sym/working_state.h"

#include "common/acccom.h"
#include "common/stream.h"
#include "sym/engine.h"

namespace acc {

bool WorkingState::reserve(std::size_t records) {
    if (records <= room_) return true;
    const auto bytes = [](std::size_t count) {
        return static_cast<unsigned>(count * sizeof(TempInfo));
    };
    void *const larger = CM_realloc(records_.get(), bytes(room_), bytes(records));
    if (!larger) return false;
    static_cast<void>(records_.release()); // CM_realloc has freed it
    records_.reset(static_cast<TempInfo *>(larger));
    room_ = records;
    return true;
}

TempInfo *WorkingState::append() {
    constexpr std::size_t first_room = 64;
    if (records().size() == room_ && !reserve(room_ == 0 ? first_room : 2 * room_)) return nullptr;
    ++header_.usCount;
    return &records().back();
}

bool WorkingState::seek_text() const {
    return CM_seek(handle(), static_cast<int>(text_position(header_.usCount)), 0) == 0;
}

WorkingState::Finish WorkingState::finish() {
    header_.ulTextPos = text_position(header_.usCount);
    if (CM_seek(handle(), 0, 0) != 0 || !write_all(handle(), &header_, sizeof header_) ||
        !write_all(handle(), records_.get(), records().size_bytes()) || flush(handle()) != 0) {
        return Finish::write_failed;
    }
    child_flags_ = acc::child_flags(records());
    return child_flags_ ? Finish::done : Finish::no_memory;
}

void WorkingState::install() {
    file_.become_working();
    install_index(header_, std::move(records_), std::move(child_flags_));
}

} // namespace acc
