// Opening a symbol file by its title, and closing it.
#include <cstring>

#include "common/acccom.h"
#include "common/stream.h"
#include "record/message.h"
#include "sym/catalogue.h"
#include "sym/develop.h"
#include "sym/read_back.h"
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

/** Reads the file of a path whole. @return 1; else the failed open's result */
int read_file(Accdata *record, const unsigned char *path, SymbolText &text) {
    const SymbolFile file(path);
    if (!file) return fail(record, Message::file_does_not_exist);
    WholeFile disk = read_to_end(file.handle(), most_text);
    if (disk && disk.length == 0) return fail(record, Message::not_a_symbol_file);
    set_list_geometry(record);
    if (disk.result == WholeFile::Result::no_memory) return fail(record, Message::out_of_memory);
    if (!disk || !SymFileRead(std::move(disk), text)) {
        return fail(record, Message::not_a_symbol_file);
    }
    return ACC_RET_OK;
}

/** Opens the file of a catalogue entry. */
int open_entry(Accdata *record, const unsigned char *path) {
    SymbolText text;
    if (const int result = read_file(record, path, text); result != ACC_RET_OK) return result;
    WorkingState state;
    switch (SymTempDevelop(text.text(), text.title, state)) {
        case Develop::cannot_create:
            return fail(record, Message::opening_failed);
        case Develop::write_failed:
            return fail(record, Message::writing_failed);
        case Develop::no_memory:
            return fail(record, Message::reading_failed);
        case Develop::too_deep:
            put_message(record, Message::list_box_memory);
            return ACC_RET_LBMEMORY;
        case Develop::does_not_fit:
            return fail(record, Message::not_a_symbol_file);
        case Develop::done:
            break;
    }
    state.install();
    m_bTextCut = text.cut;
    record->wCurrentList = 1;
    if (SYM_SetDataPos(record, open_title()) == ACC_RET_NOTFOUND) {
        release_open_file();
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
    return acc::open_entry(record, entry->ucFileName);
}

int SYM_FileCloseProc(Accdata *record) {
    if (!acc::is_file_open()) return acc::fail(record, acc::Message::no_file_open);
    acc::release_open_file();
    acc::SymInitFileTable();
    return ACC_RET_OK;
}
