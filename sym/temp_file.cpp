#include "sym/temp_file.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

#include "common/acccom.h"
#include "common/stream.h"

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

/** Closes a temp file and removes it; hFile becomes 0. */
void discard(AccFile &file) {
    if (file.hFile == 0) return;
    CM_close(file.hFile);
    CM_remove(file.ucFullName);
    file.hFile = 0;
}

/**
 * Makes a new temp file.
 * @param file  its names are set; ucDir is empty and ucName the whole path
 * @return      the handle, or -1
 */
int SymTempOpen(AccFile &file) {
    const char *directory = std::getenv("TMPDIR");
    if (!directory || !*directory) directory = P_tmpdir;
    // Absolute: the host may go to another directory before the file is removed.
    char here[sizeof file.ucName] = "";
    if (directory[0] != '/' && !getcwd(here, sizeof here)) return -1;
    const int length =
        std::snprintf(reinterpret_cast<char *>(file.ucName), sizeof file.ucName,
                      "%s%s%s/accsymXXXXXX", here, directory[0] == '/' ? "" : "/", directory);
    if (length < 0 || static_cast<std::size_t>(length) >= sizeof file.ucName) return -1;
    file.ucDir[0] = 0;
    const int handle = create_temporary(file.ucName);
    std::memcpy(file.ucFullName, file.ucName, static_cast<std::size_t>(length) + 1);
    return handle;
}

} // namespace

NewTempFile::~NewTempFile() {
    discard(file_);
}

bool NewTempFile::create() {
    const int handle = SymTempOpen(file_);
    file_.hFile = handle == -1 ? 0 : handle;
    return handle != -1;
}

void NewTempFile::become_working() {
    discard(g_tAccFile[1]);
    g_tAccFile[1] = file_;
    file_.hFile = 0;
    owner = getpid();
}

void discard_working_temp_file() {
    discard(g_tAccFile[1]);
}

} // namespace acc
