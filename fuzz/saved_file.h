// What becomes of the open file on disk.
#ifndef FUZZ_SAVED_FILE_H
#define FUZZ_SAVED_FILE_H

#include <filesystem>
#include <string>

#include "fuzz/canary_host.h"
#include "fuzz/temp_file.h"

/** Whether a text comes back the same from the disk form. */
bool comes_back(const std::string &text_form);

/** Whether the name line ends within what a scan reads of the file. */
bool is_listed_whole(const std::string &text_form);

/** Whether a title is one that nothing in a file takes for something else. */
bool is_plain_title(const std::string &title);

/** A process of its own, with the library as it starts, that opens what was saved. */
class FreshReader {
  public:
    /** @param place  a directory that it makes; whoever owns the one around removes it */
    FreshReader(CanaryHost &host, const std::filesystem::path &place);
    FreshReader(const FreshReader &) = delete;
    FreshReader &operator=(const FreshReader &) = delete;
    ~FreshReader();

    /**
     * Opens a symbol file of these bytes and holds what is found there against the open file.
     * A title below the last list stops the open, as it is meant to.
     */
    void look(const std::string &bytes, const TempFile &file) const;

  private:
    std::filesystem::path place_, temp_;
    int socket_;
};

#endif
