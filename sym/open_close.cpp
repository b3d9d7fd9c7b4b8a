// Opening a symbol file by its title, and closing it.
#include <cstring>

#include "common/acccom.h"
#include "common/stream.h"
#include "record/message.h"
#include "sym/catalogue.h"
#include "sym/symbol_file.h"

namespace acc {
namespace {

constexpr int longest_directory = 1022; // with its "/" and NUL it fills 1024 bytes

/** Stores the three directories, each ended with "/". @return false when one is too long */
bool take_directories(const Accdata *record) {
    struct {
        const unsigned char *from;
        unsigned char *to;
    } const directories[] = {{record->lpchString2, m_ucZikDir},
                             {record->lpchString3, m_ucZikProgDir},
                             {record->lpchString4, m_ucZikCommonDir}};
    for (const auto &directory : directories) {
        if (CM_lstrlen(directory.from) > longest_directory) return false;
    }
    for (const auto &directory : directories) {
        CM_strcpy(directory.to, directory.from);
        CM_PathEndChk(directory.to);
    }
    return true;
}

/** The open symbol file of g_tAccFile[0], closed at the end of the scope. */
class SymbolFile {
  public:
    explicit SymbolFile(const unsigned char *path) : file_(SymFileOpen(path)) {
        g_tAccFile[0].hFile = file_ ? file_.handle() : 0;
    }
    ~SymbolFile() { g_tAccFile[0].hFile = 0; }
    SymbolFile(const SymbolFile &) = delete;
    SymbolFile &operator=(const SymbolFile &) = delete;

    explicit operator bool() const { return static_cast<bool>(file_); }
    int handle() const { return file_.handle(); }

  private:
    OpenFile file_;
};

/** Reads the file into memory and develops it into the working temp file. */
int develop_file(Accdata *record, const unsigned char *path) {
    const SymbolFile file(path);
    if (!file) return fail(record, Message::file_does_not_exist);
    const int size = CM_stat(g_tAccFile[0].ucFullName);
    if (size == 0) return fail(record, Message::not_a_symbol_file);
    set_list_geometry(record);

    auto raw = HeapBlock<unsigned char>::allocate(static_cast<unsigned>(size) + 1);
    if (!raw) return fail(record, Message::out_of_memory);
    SymbolText text;
    if (!SymFileRead(file.handle(), std::move(raw), size, text)) {
        return fail(record, Message::not_a_symbol_file);
    }
    if (SymTempOpenProc(record) != ACC_RET_OK) return ACC_RET_ERROR;

    static TempInfo m_tTempDevelop_TempInfo;
    switch (SymTempDevelop(g_tAccFile[1].hFile, text.text(), text.title, &m_tTempDevelop_TempInfo,
                           &m_tTempIndex)) {
        case Develop::too_deep:
            put_message(record, Message::list_box_memory);
            return ACC_RET_LBMEMORY;
        case Develop::write_failed:
            return fail(record, Message::writing_failed);
        case Develop::does_not_fit:
            return fail(record, Message::not_a_symbol_file);
        case Develop::done:
            break;
    }
    return ACC_RET_OK;
}

/** Reads the index of the working temp file back. @return false on failure */
bool load_index() {
    const TempIndex header = m_tTempIndex;
    auto records = SymTempIndexRead(g_tAccFile[1].hFile, header);
    if (!records) return false;
    auto flags = child_flags({records.get(), header.usCount});
    if (!flags) return false;
    install_index(header, std::move(records), std::move(flags));
    return true;
}

/** Opens the file of a catalogue entry. Whatever it leaves, the caller releases on failure. */
int open_entry(Accdata *record, const unsigned char *path) {
    if (const int result = develop_file(record, path); result != ACC_RET_OK) return result;
    if (!load_index()) return fail(record, Message::reading_failed);
    record->wCurrentList = 1;
    if (SYM_SetDataPos(record, open_title()) == ACC_RET_NOTFOUND) {
        return fail(record, Message::reading_failed);
    }
    return ACC_RET_OK;
}

} // namespace
} // namespace acc

int SYM_FileOpenProc(Accdata *record) {
    using acc::Message;
    if (acc::is_file_open()) return acc::fail(record, Message::file_already_open);
    if (!record->lpchString1 || !record->lpchString2 || !record->lpchString3 ||
        !record->lpchString4) {
        return acc::fail(record, Message::memory_not_allocated);
    }
    if (!acc::take_directories(record)) return acc::fail(record, Message::argument_error);
    acc::rescan_catalogue();
    const SymFileListEntry *entry = acc::SymMemTableTitleSearchProc(record->lpchString1);
    if (!entry) return acc::fail(record, Message::file_does_not_exist);
    acc::m_bEditFlag = 0;
    const int result = acc::open_entry(record, entry->ucFileName);
    if (result != ACC_RET_OK) acc::release_open_file();
    return result;
}

int SYM_FileCloseProc(Accdata *record) {
    if (!acc::is_file_open()) return acc::fail(record, acc::Message::no_file_open);
    acc::release_open_file();
    acc::SymInitFileTable();
    return ACC_RET_OK;
}
