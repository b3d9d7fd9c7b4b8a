// shelf.h - what there is to pick from, in memory: sets, favourites, recent picks, the index.
#ifndef KIGOU_PICKER_PICKING_SHELF_H
#define KIGOU_PICKER_PICKING_SHELF_H

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "picker/directories.h"
#include "picker/file_bytes.h"
#include "picker/recents.h"
#include "picker/search/index.h"
#include "picker/set_files.h"
#include "picker/snapshot.h"

namespace kigou {

/** It looks at the disk when it is made and when it is told to, and reads a set once. */
class Shelf {
  public:
    /**
     * @param hidden  titles or file names of files that are to be as if they were not there
     * @throws Failure as find_sets
     */
    Shelf(Directories directories, Recents recents, std::vector<std::string> hidden = {});

    /** Looks at the disk again. @throws Failure as find_sets */
    void refresh();

    /** Whether another look is worth it; a few microseconds a set. */
    bool is_stale() const { return identities() != seen_; }

    /** What tells the sets of one look from those of another. */
    std::vector<std::pair<std::string, std::optional<FileIdentity>>> versions() const;

    /** The sets that show: お気に入り, the standard set, then the others as in the catalogue. */
    const std::vector<SetFile> &sets() const { return shown_; }

    /** The set of that title; null when none shows. */
    const SetFile *find(std::string_view title) const;

    /** The same with those that are hidden, and files that are no sets. */
    const SetFiles &files() const { return found_; }

    /** Whether a set, by its path on disk, cannot be changed. */
    bool is_read_only(const std::string &path) const;

    /** A set in memory, as it was at the last look. @throws Failure as Snapshot */
    std::shared_ptr<const Snapshot> snapshot(const std::string &path) const;

    /** Made when it is first asked for, which takes as long as all sets are large. */
    const SearchIndex &index() const;

    /**
     * Does a part of what makes the index, the reading of one set at most, for one who has time.
     * @return whether there is more to do
     */
    bool prepare_index() const;

    /** Recent picks as they were at the last look, newest first. */
    const std::vector<Sjis> &recent() const { return recent_; }

    /**
     * Has picks, in their order, among the recent ones until the next look; for a front end that
     * notes them elsewhere.
     * @param most  recent picks to have
     */
    void show_recent(const std::vector<Sjis> &picks, std::size_t most);

    /** Notes picks, in their order. @return a line for people when that failed; else empty */
    std::string note(const std::vector<Sjis> &picks);

    /** Takes a symbol out of the recent picks. @return as note */
    std::string forget(const Sjis &symbol);

    const Directories &directories() const { return directories_; }

  private:
    using Identities = std::vector<std::optional<FileIdentity>>;

    Identities identities() const;

    Directories directories_;
    Recents recents_;
    std::vector<std::string> hidden_;
    SetFiles found_;
    std::vector<SetFile> shown_;
    Identities seen_; /**< of the folders, and then of the sets */
    std::vector<Sjis> recent_;
    mutable std::map<std::string, std::shared_ptr<const Snapshot>> read_;
    mutable SearchIndex index_;
    mutable bool indexed_ = false;
    mutable std::size_t prepared_ = 0; /**< sets that were read for the next index */
};

} // namespace kigou

#endif
