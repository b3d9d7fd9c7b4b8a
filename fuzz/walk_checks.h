// What must hold between the commands of a walk, whatever the files are.
#ifndef FUZZ_WALK_CHECKS_H
#define FUZZ_WALK_CHECKS_H

#include "fuzz/saved_file.h"
#include "fuzz/walk_step.h"

class WalkChecks {
  public:
    /** @param temp  where working temp files lie */
    WalkChecks(CanaryHost &host, const OddFolders &folders, std::filesystem::path temp);

    /**
     * Looks at files, working temp file and lists; each must be sound by itself.
     * @param last     what was seen before
     * @param command  what was sent since; 0: others may have changed the files
     */
    Seen look(const Seen &last, int command) const;

    /** Looks at the record alone. */
    void look_at_record(Seen &seen) const;

    /** Holds what a command answered and changed against what it may. */
    void check(const Sent &sent, int result, const Seen &before, const Seen &after) const;

  private:
    void check_edit(const Sent &sent, const Seen &before, const Seen &after) const;
    void check_converted(const Seen &before, const Seen &after) const;
    void check_save(const Sent &sent, int result, const Seen &before, const Seen &after) const;
    void check_saved(const Sent &sent, const Seen &before, const Seen &after) const;
    bool all_can_be_seen(const Seen &seen) const;

    CanaryHost &host_;
    const OddFolders &folders_;
    std::filesystem::path temp_;
    FreshReader reader_;
    int descriptors_; // in use while no file is open
};

#endif
