// set_edits.h - the edits that are made out of the picking. Each is one edit of the file as it is
// on disk at that moment, saved at once, and can be undone; so nothing is ever unsaved, and what
// another program saved meanwhile is kept.
#ifndef KIGOU_PICKER_PICKING_SET_EDITS_H
#define KIGOU_PICKER_PICKING_SET_EDITS_H

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "picker/history.h"
#include "picker/snapshot.h"

namespace kigou {

/** A title as a front end shows it, which may be older than the file. */
struct ShownTitle {
    std::shared_ptr<const Snapshot> set;
    std::size_t number;

    Title title() const { return set->title(number); }
};

/**
 * Every edit returns what it did in a sentence, and throws Failure as Edit does when nothing was
 * done: kind changed when another program changed the same symbols or titles.
 */
class SetEdits {
  public:
    explicit SetEdits(Directories directories)
        : directories_(directories), history_(std::move(directories)) {}

    /** What to do when there is no title of a path, or no set either. */
    enum class Missing { refuse, make };

    /**
     * Adds the symbols that a title lacks.
     * @param path  as typed; お気に入り is made in any case
     * @throws Failure: nothing_found for a title that is missing
     */
    std::string copy(const std::vector<Sjis> &symbols, const std::string &path, Missing missing);

    /**
     * Copies symbols, and then changes the data of the title that they are from.
     * @param rest  data of that title without them
     */
    std::string move(const std::vector<Sjis> &symbols, const ShownTitle &from, const Sjis &rest,
                     const std::string &path, Missing missing);

    /** Moves a title, with all below it, below another one, of any set. @param path  as typed */
    std::string move_title(const ShownTitle &title, const std::string &path, Missing missing);

    /** Moves a title past one that has the same parent. */
    std::string move_past(const ShownTitle &title, std::size_t sibling);

    /**
     * Gives a title other symbols; those that another program added meanwhile stay.
     * @param change  what was done to how many symbols: appended, removed or moved
     */
    std::string change(const ShownTitle &title, const Sjis &data, Change change);

    std::string make_set(const std::string &name);
    std::string add_title(const std::string &parent, const std::string &name);

    /** @param path  full path of a title or title of a set */
    std::string rename(const std::string &path, const std::string &name);

    // Only with what is shown: what another program put there meanwhile nobody wanted to remove.
    std::string remove_title(const ShownTitle &title);
    std::string delete_set(const ShownTitle &set);

    /**
     * Takes the last edit back, or makes it again. What will not be as it was is returned at
     * first, and done when it is asked for once more. One that cannot be taken back is passed
     * over when it is asked for once more.
     */
    std::string undo() { return take_back(false); }
    std::string redo() { return take_back(true); }

    bool can_undo() const { return history_.to_undo().has_value(); }

    /** Full path of what the last undo or redo was of. */
    const std::string &touched() const { return touched_; }

    /** Something else was done: the next undo tells again what will not be as it was. */
    void forget_warning() { warned_ = pass_over_ = false; }

    /** How long an edit waits for another program: two seconds. */
    static EditHooks hooks();

  private:
    using Work = std::function<void(Edit &)>;

    std::optional<std::string> make(const Work &work, bool may_make_file = false,
                                    bool joined = false);
    bool make_titles(const std::string &path);
    std::string with_titles(const std::string &path, Missing missing,
                            const std::function<std::string(bool)> &work);
    std::string move_within(const ShownTitle &shown, const Title &target, bool joined);
    std::string move_across(const ShownTitle &shown, const Title &target, bool joined);
    std::optional<std::string> add_symbols(const std::vector<Sjis> &symbols,
                                           const std::string &path, bool joined);
    static bool put_merged(Edit &edit, const ShownTitle &shown, const Sjis &data, Change change);
    std::string take_back(bool again);

    Directories directories_;
    History history_;
    bool warned_ = false, pass_over_ = false;
    std::string touched_;
    std::size_t made_ = 0; /**< edits */
};

} // namespace kigou

#endif
