// opening.h - what is picked from while the symbols are open, and the place kept until they are
// opened again. Of fcitx5 it knows nothing.
#ifndef KIGOU_FCITX_OPENING_H
#define KIGOU_FCITX_OPENING_H

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fcitx/beside.h"
#include "picker/picking/picking.h"

namespace kigou {

struct OpeningSettings {
    std::size_t page_size = 9;
    std::size_t recent_picks = Recents::most; /**< to keep; with 0 those that are kept go */
    std::vector<std::string> hidden{};        /**< as Shelf */

    bool operator==(const OpeningSettings &) const = default;
};

/** One is enough: symbols are open in the text field that has the focus, and in no other. */
class Opening {
  public:
    /** Closes it when these are others. */
    void use(OpeningSettings settings);

    /**
     * Looks at the disk and begins where it was left. What cannot be read is told by the view;
     * without a single set it is open all the same, with nothing to pick.
     */
    void open();
    void close();

    /** @return the symbols that were taken by it, in their order */
    std::vector<Sjis> act(const Action &action);

    bool is_open() const { return open_; }

    /** Whether the last action ended it; then it is to be closed. */
    bool is_over() const;

    /** The current column, and what there is to say. */
    View view() const;

    /** As Picking. */
    std::optional<std::size_t> symbols_below(std::size_t index) const;

    /** Notes recent picks beside the caller, who need not wait for the disk or for other programs;
        what goes wrong is told at the next opening. */
    void note(std::vector<Sjis> picks);

    /**
     * Puts the symbol under the cursor into お気に入り, or takes it out of there, beside the
     * caller.
     * @param done  called by another thread with what there is to say, for show; never when there
     *              is no symbol, which the view tells
     */
    void toggle_favourite(std::function<void(std::string told, bool failed)> done);

    /** Has what was done beside among what is shown. A failure is told now or when it opens. */
    void show(const std::string &told, bool failed);

  private:
    void keep_place();
    void look();

    OpeningSettings settings_;
    std::unique_ptr<Shelf> shelf_;     /**< none until it could be made */
    std::unique_ptr<Picking> picking_; /**< none when there is nothing to pick from */
    bool open_ = false, over_ = false;
    std::vector<Sjis> unnoted_; /**< recent picks that may not be on disk yet */
    std::string untold_;        /**< what went wrong while it was closed */
    std::string trouble_;    /**< told until the first action, or as long as there is no picking */
    std::string place_;      /**< path of the column that one was in last, searches aside */
    std::size_t cursor_ = 0; /**< in it */
    Beside beside_;
};

} // namespace kigou

#endif
