// Creating and discarding temp files.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

#include "common/acccom.h"
#include "common/stream.h"
#include "record/message.h"
#include "sym/temp_index.h"

AccFile g_tAccFile[2];

namespace acc {
namespace {

// A child process that a host forks inherits the engine's state, but not the temp file:
// it must not remove its parent's when it ends.
pid_t owner;

/** A host that ends without closing leaves no temp file behind. */
__attribute__((destructor)) void remove_working_temp_file() {
    if (g_tAccFile[1].hFile != 0 && owner == getpid()) CM_remove(g_tAccFile[1].ucFullName);
}

} // namespace

int SymTempOpen(AccFile *file) {
    const char *directory = std::getenv("TMPDIR");
    if (!directory || !*directory) directory = P_tmpdir;
    file->ucDir[0] = 0;
    const int length = std::snprintf(reinterpret_cast<char *>(file->ucName), sizeof file->ucName,
                                     "%s/accsymXXXXXX", directory);
    if (length < 0 || static_cast<std::size_t>(length) >= sizeof file->ucName) return -1;
    const int handle = create_exclusive(file->ucName);
    std::memcpy(file->ucFullName, file->ucName, static_cast<std::size_t>(length) + 1);
    return handle;
}

void discard_temp_file(AccFile *file) {
    CM_close(file->hFile);
    CM_remove(file->ucFullName);
    file->hFile = 0;
}

bool NewTempFile::create() {
    const int handle = SymTempOpen(&file_);
    file_.hFile = handle == -1 ? 0 : handle;
    return handle != -1;
}

void NewTempFile::become_working() {
    if (g_tAccFile[1].hFile != 0) discard_temp_file(&g_tAccFile[1]);
    g_tAccFile[1] = file_;
    file_.hFile = 0;
    owner = getpid();
}

int SymTempOpenProc(Accdata *record) {
    NewTempFile file;
    if (!file.create()) return fail(record, Message::opening_failed);
    file.become_working();
    return ACC_RET_OK;
}

} // namespace acc
