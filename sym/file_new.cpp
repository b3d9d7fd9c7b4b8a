// Creating a symbol file, which lies in the working temp file alone until it is saved.
#include <cstdio>

#include "common/acccom.h"
#include "sym/accept.h"
#include "sym/catalogue.h"
#include "sym/develop.h"

namespace acc {
namespace {

/** Develops the two head lines of a file of that title. */
Develop develop_new_file(const unsigned char *title, WorkingState &state) {
    unsigned char text[title_offset_as_written + max_file_title + 3];
    const int bytes = std::snprintf(reinterpret_cast<char *>(text), sizeof text, "%s\r\n%s%s\r\n",
                                    reinterpret_cast<const char *>(m_ucSymHeader.data()),
                                    reinterpret_cast<const char *>(m_ucSymNameHeader.data()),
                                    reinterpret_cast<const char *>(title));
    const Range title_range = {title_offset_as_written,
                               static_cast<std::uint32_t>(CM_lstrlen(title))};
    return SymTempDevelop({text, static_cast<std::size_t>(bytes)}, title_range, state);
}

} // namespace
} // namespace acc

int SYM_FileNewProc(Accdata *record) {
    using acc::Message;
    const unsigned char *title = record->lpchString1;
    if (!title) return acc::fail(record, Message::memory_not_allocated);
    if (title[0]) {
        const auto verdict = acc::accept_title(title, acc::max_file_title);
        if (verdict != acc::Verdict::accepted) return acc::refuse(record, verdict);
    }
    acc::rescan_catalogue();
    if (acc::SymMemTableTitleSearchProc(title))
        return acc::fail(record, Message::symbol_file_exists);
    if (!acc::search_is_certain(nullptr)) return acc::fail(record, Message::reading_failed);

    acc::WorkingState state;
    switch (acc::develop_new_file(title, state)) {
        case acc::Develop::no_memory:
            return -1;
        case acc::Develop::cannot_create:
            return acc::fail(record, Message::opening_failed);
        case acc::Develop::done:
            break;
        default:
            return acc::fail(record, Message::writing_failed);
    }
    state.install();
    acc::m_bEditFlag = 1;

    acc::set_list_geometry(record);
    record->wCurrentList = 1;
    SYM_SetDataPos(record, acc::open_title());
    return ACC_RET_OK;
}
