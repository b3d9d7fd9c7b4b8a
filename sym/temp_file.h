// Creating and discarding temp files.
#ifndef ACCSYM_SYM_TEMP_FILE_H
#define ACCSYM_SYM_TEMP_FILE_H

#include "accfile.h"

namespace acc {

/** A new temp file; unless it became the working one it is removed at the end. */
class NewTempFile {
  public:
    NewTempFile() = default;
    ~NewTempFile();
    NewTempFile(const NewTempFile &) = delete;
    NewTempFile &operator=(const NewTempFile &) = delete;

    /**
     * Creates it, readable and writable by its owner alone, in TMPDIR when that is set or else
     * in the system's directory.
     * @return false when it cannot be created
     */
    bool create();

    int handle() const { return file_.hFile; }
    const unsigned char *path() const { return file_.ucFullName; }

    /** Removes the working temp file and takes its place. */
    void become_working();

  private:
    AccFile file_{};
};

/** Closes and removes the working temp file, if there is one: no symbol file is open. */
void discard_working_temp_file();

} // namespace acc

#endif
