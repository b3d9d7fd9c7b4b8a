// The directories of a host, filled with odd files, and what happens to them behind the
// library's back.
#ifndef FUZZ_ODD_FOLDERS_H
#define FUZZ_ODD_FOLDERS_H

#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "fuzz/odd_files.h"

/** What a directory entry is: its kind and permissions, its bytes or where it leads. */
struct Entry {
    struct stat status;
    std::string bytes;
    bool operator==(const Entry &other) const {
        return status.st_mode == other.status.st_mode && bytes == other.bytes;
    }
};

/** A directory and every entry below it, by path. Links are not followed. */
using Entries = std::map<std::string, Entry>;

Entries entries_below(const std::filesystem::path &directory);

/** Whether the system has noted no change of any of them; far quicker than to look. */
bool are_untouched(const Entries &entries);

class OddFolders {
  public:
    /** Makes and fills user, program, common and other directories below an empty root. */
    OddFolders(const std::filesystem::path &root, Choice &choice, OddFiles &files);

    /** Does something to the directories or the files in them. @return what, for people */
    std::string mischief();

    std::filesystem::path root, user, program, common, elsewhere, work;

    /** File titles, in the text form, that files were made with. */
    std::vector<std::string> titles;

  private:
    void add_file(const std::filesystem::path &directory);
    void add_old_files();

    Choice &choice_;
    OddFiles &files_;
};

#endif
