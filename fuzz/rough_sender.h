// Which command comes next in a walk, with what, and what the host has done to its record.
#ifndef FUZZ_ROUGH_SENDER_H
#define FUZZ_ROUGH_SENDER_H

#include <string>
#include <vector>

#include "fuzz/walk_step.h"

class RoughSender {
  public:
    RoughSender(Choice &choice, OddFiles &files, const OddFolders &folders)
        : choice_(choice), files_(files), folders_(folders) {}

    /** A command, mostly one that can be done with what is there. */
    Sent next(const Seen &seen);

    /** A command as a careful host sends it. */
    Sent with_directories(int command, const std::string &string1) const;

    /** Does to the record what a rough host does between two commands. @return what, for people */
    std::string disturb(Accdata &record, const Seen &seen);

    /** File titles that the library gave last. */
    std::vector<std::string> listed;

  private:
    std::string operand(int command, const Seen &seen);
    std::string file_title(const Seen &seen);
    std::string path(const Seen &seen);

    Choice &choice_;
    OddFiles &files_;
    const OddFolders &folders_;
};

#endif
