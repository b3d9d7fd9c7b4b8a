// place.h - one column of what is picked from: all sets, recent picks, or a title with what
// stands directly below it.
#ifndef KIGOU_PICKER_PICKING_PLACE_H
#define KIGOU_PICKER_PICKING_PLACE_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "picker/picking/shelf.h"

namespace kigou {

/** The path of the recent picks. */
inline constexpr std::string_view recents_title = "最近";

/** What one item of a column leads to. */
enum class ItemKind { recent, set, title, symbol };

struct PlaceItem {
    ItemKind kind;
    std::string label;  /**< UTF-8; of a title its last part, of a symbol the symbol */
    bool below = false; /**< a title that has titles below it */
    Sjis symbol{};      /**< two bytes; empty for other items */
    std::string path{}; /**< of what a search found: the first title that holds it; else empty */
};

/**
 * Its items are made one by one as they are asked for, so a place of 30,000 symbols costs no
 * more than what is shown of it. It keeps the snapshot that it shows.
 */
class Place {
  public:
    /** All sets, behind 最近 where there are recent picks. */
    static Place all_sets(const Shelf &shelf);
    static Place recent_picks(const Shelf &shelf);

    /**
     * All sets, but where the standard set is the only one beside お気に入り its titles stand in
     * its place. @throws Failure when it cannot be read
     */
    static Place all_sets_opened(const Shelf &shelf);

    /** A title of a set; 0 is the set itself. Titles first, and then its symbols. */
    static Place title(std::shared_ptr<const Snapshot> snapshot, std::size_t number);

    std::size_t size() const { return titles() + symbols_.size(); }
    PlaceItem item(std::size_t index) const;

    /** Items that are no symbols; they come first. */
    std::size_t titles() const;

    /** Full path, or that of the recent picks; empty for all sets. */
    const std::string &path() const { return path_; }

    /** The set, and the number of the title in it; null for the other places. */
    const std::shared_ptr<const Snapshot> &snapshot() const { return snapshot_; }
    std::size_t number() const { return number_; }

    /** The place that an item leads to. The index is that of a title. @throws Failure */
    Place below(const Shelf &shelf, std::size_t index) const;

    /** The first item with that symbol; size() when there is none. */
    std::size_t find(const Sjis &symbol) const;

    /** The item that leads to a title or set of that full path; size() when there is none. */
    std::size_t find_path(const std::string &path) const;

    /** Full path of the title or set that an item leads to; empty for the others. */
    std::string path_at(std::size_t index) const;

    /** Symbols at and below a title, set or the recent picks. @throws Failure as snapshot */
    std::size_t symbols_below(const Shelf &shelf, std::size_t index) const;

    /** The set whose titles stand among all sets; null when none does. */
    const std::shared_ptr<const Snapshot> &opened() const { return opened_; }

    /** What tells two places apart. */
    std::string key() const;

  private:
    Place() = default;

    std::size_t recents() const { return has_recent_ ? 1 : 0; }

    /** A title by its set and number; null for items that are none. */
    std::pair<std::shared_ptr<const Snapshot>, std::size_t> title_at(std::size_t index) const;

    std::string path_;
    std::shared_ptr<const Snapshot> snapshot_;
    std::size_t number_ = 0;
    bool has_recent_ = false;
    std::vector<SetFile> sets_;
    std::shared_ptr<const Snapshot> opened_;
    std::vector<unsigned short> symbols_;
};

} // namespace kigou

#endif
