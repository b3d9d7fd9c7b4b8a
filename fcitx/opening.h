// opening.h - what is picked from while the symbols are open, and the place kept until they are
// opened again. Of fcitx5 it knows nothing.
#ifndef KIGOU_FCITX_OPENING_H
#define KIGOU_FCITX_OPENING_H

#include <cstddef>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "picker/picking/picking.h"

namespace kigou {

/** One is enough: symbols are open in the text field that has the focus, and in no other. */
class Opening {
  public:
    /** How many picks to keep from the next opening on; 0 forgets those that are kept. */
    void keep_recent(std::size_t picks);

    /**
     * Looks at the disk and begins where it was left. What cannot be read is told by the view;
     * without a single set it is open all the same, with nothing to pick.
     */
    void open(std::size_t page_size);
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

  private:
    void keep_place();
    std::string noted();

    std::size_t recent_picks_ = Recents::most;
    std::unique_ptr<Shelf> shelf_;     /**< none until it could be made */
    std::unique_ptr<Picking> picking_; /**< none when there is nothing to pick from */
    bool open_ = false, over_ = false;
    std::vector<Sjis> unnoted_;       /**< what that has and may not be on disk yet */
    std::future<std::string> noting_; /**< the last note, behind those before it */
    std::string trouble_;    /**< told until the first action, or as long as there is no picking */
    std::string place_;      /**< path of the column that one was in last, searches aside */
    std::size_t cursor_ = 0; /**< in it */
};

} // namespace kigou

#endif
