// recents.h - the symbols that a person picked last, shared by all front ends that run.
//
// They are a text file of one line a symbol, its Shift_JIS code and the character, which a person
// may read and change. Nothing here throws for what a file or a disk does: a pick that cannot be
// noted is no failure of the pick.
#ifndef KIGOU_PICKER_RECENTS_H
#define KIGOU_PICKER_RECENTS_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "picker/directories.h"
#include "picker/text.h"

namespace kigou {

/** What there is after something was asked of the recent picks. */
struct RecentPicks {
    std::vector<Sjis> symbols; /**< newest first, each once; without the change if it failed */
    bool done = true;          /**< false: nothing was changed, and trouble says why */
    std::string trouble{};     /**< a line for people, also of a damaged file that was put aside */
};

class Recents {
  public:
    static constexpr std::size_t most = 100;

    /**
     * Touches nothing yet.
     * @param folder  made, for its owner alone, when the first pick is noted
     * @param limit   picks to keep, most at most. With 0 nothing is kept, and whatever is asked
     *                removes what was kept before.
     */
    explicit Recents(std::string folder = state_directory(), std::size_t limit = most);

    /**
     * Reads without waiting. A file that is not what was written here gets another name, what can
     * be read of it is kept, and trouble tells of it once.
     */
    RecentPicks read() const;

    /**
     * Notes a pick as the newest. It waits for the disk, and a quarter of a second at most for
     * another process, and then does without: call it behind the pick.
     * @param symbol  two bytes; the single byte in which a block can end is not noted
     *                and no trouble
     */
    RecentPicks add(const Sjis &symbol) const;

    RecentPicks remove(const Sjis &symbol) const;

    /** Forgets all, also what was put aside. */
    RecentPicks clear() const;

  private:
    using Symbols = std::vector<Sjis>;

    struct File {
        Symbols symbols;
        std::string damage; /**< why it is put aside; empty for a sound file or none */
    };

    File look() const;
    RecentPicks change(const std::function<void(Symbols &)> &edit) const;
    RecentPicks forget() const;
    std::string put_aside(const std::string &damage) const;
    void sweep() const;

    std::string folder_, path_;
    std::size_t limit_;
};

} // namespace kigou

#endif
