// picking.h - picking a symbol, as a value: actions go in, a view comes out. A front end maps its
// keys to actions and draws the view; it decides nothing.
//
// What is picked from stands in columns: all sets, a set, a title in it, and so on. One of them is
// current and has the cursor; what the cursor stands on is shown in a column behind it. A column
// has pages of as many items as the front end has rows for.
#ifndef KIGOU_PICKER_PICKING_PICKING_H
#define KIGOU_PICKER_PICKING_PICKING_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "picker/history.h"
#include "picker/picking/place.h"
#include "picker/search/search.h"

namespace kigou {

enum class Act {
    next, /**< to the next item, on the next page too */
    previous,
    next_page, /**< to the first item of the next page */
    previous_page,
    first,
    last,
    point,         /**< to the item of that number, from 0 in the column */
    enter,         /**< into a set or title; a symbol is taken, and that ends it */
    enter_title,   /**< the same, but a symbol is left alone */
    back,          /**< to the column before, or out of the search; at the first nothing happens */
    take,          /**< takes the symbol under the cursor and ends */
    take_and_stay, /**< takes it and goes on */
    take_number,   /**< goes to the item of that number on the page, from 1, and enters it */
    drop_pick,     /**< gives the last pick back */
    next_title, /**< to the next title of the set, whatever its level; behind the last the first */
    previous_title,
    search,    /**< opens the search, empty, or goes back into it */
    type,      /**< adds the text to what is searched for */
    erase,     /**< takes its last character away */
    show,      /**< from what the search found to where it stands */
    copy_to,   /**< asks for a title of one's own; the symbol, or the picks, are added to it */
    new_title, /**< asks for a title to make below this one; among the sets, for a new set */
    rename,    /**< asks for another name of the title or set under the cursor */
    remove,    /**< removes the symbol, title or set under the cursor */
    raise,     /**< moves the symbol under the cursor before the one before it */
    lower,     /**< moves it behind the one behind it */
    undo,      /**< takes the last edit back; once more for one that cannot be exactly */
    redo,
    finish, /**< ends with what was taken */
    cancel  /**< ends with nothing */
};

struct Action {
    Act act;
    std::string text{};
    std::size_t number = 0;
};

/** What is told of the symbol under the cursor. Texts are UTF-8; empty where there is none. */
struct SymbolTold {
    std::string symbol, name, readings, kuten, unicode, sjis, jis, euc;
};

struct ViewColumn {
    std::string path;                    /**< full path of the title; empty for all sets */
    std::vector<PlaceItem> items;        /**< of one page */
    std::size_t first = 0;               /**< number of the first of them in the column, from 0 */
    std::size_t total = 0;               /**< items of the column */
    std::optional<std::size_t> cursor{}; /**< among items; none in the column behind the current */
};

struct View {
    std::vector<ViewColumn> columns; /**< from all sets on, as far as the window goes */
    std::size_t current = 0;         /**< number of the one with the cursor */
    bool searching = false;          /**< the current column is what was found for query */
    std::string query;
    std::string asking; /**< what is asked for, when type and erase change the answer; else empty */
    std::string answer;
    std::optional<SymbolTold> symbol; /**< under the cursor */
    std::string picks;                /**< taken so far, UTF-8, in their order */
    std::string message;              /**< what there is to say of the last action; often empty */
};

enum class PickingEnd { going_on, done, cancelled };

class Picking {
  public:
    /**
     * @param shelf  must live longer
     * @param start  full path of a title to begin at; empty: the standard set
     */
    explicit Picking(Shelf &shelf, const std::string &start = {});

    /**
     * Does one thing. Never throws for what is on disk: the message says what could not be. An
     * edit is saved at once, under the locks, and can be undone while this lives.
     */
    void act(const Action &action);

    /** How many items a page has; 1 at least. */
    void set_rows(std::size_t rows) { rows_ = rows == 0 ? 1 : rows; }

    /** @param most_columns  the last ones, the current among them; 1 at least */
    View view(std::size_t most_columns) const;

    PickingEnd end() const { return end_; }

    /** Symbols that were taken, in their order; none after a cancel. */
    const std::vector<Sjis> &picks() const { return picks_; }

    /** Looks at the disk again, and stays where it is as far as that is still there. */
    void refresh();

  private:
    struct Column {
        Place place;
        std::size_t cursor = 0;
    };

    Column &current() { return columns_.back(); }
    const Column &current() const { return columns_.back(); }
    std::size_t size() const { return searching_ ? found_.found.size() : current().place.size(); }
    std::size_t &cursor() { return searching_ ? found_cursor_ : current().cursor; }
    std::size_t cursor() const { return searching_ ? found_cursor_ : current().cursor; }
    std::optional<Sjis> symbol() const;
    PlaceItem found_item(std::size_t index) const;

    void move_to(std::size_t index);
    void push(Place place);
    void enter();
    void back();
    bool take();
    void step_title(bool forward);
    void go_to(const std::string &path);
    void go_to_title(const std::shared_ptr<const Snapshot> &snapshot, std::size_t number);
    void show_found();
    void look_for(std::string query);
    void go(const Action &action);

    // Edits, in picking_edits.cpp.
    bool edit_action(const Action &action);
    void ask(Act what);
    std::string question() const;
    void answer();
    void make_edit(const std::function<void(Edit &)> &work, bool may_make_file = false);
    void copy_to(const std::string &path);
    void add_title(const std::string &name);
    void rename(const std::string &name);
    void remove();
    void move_symbol(bool down);
    void change_symbols(const std::function<std::size_t(Sjis &, const std::vector<std::size_t> &,
                                                        std::size_t)> &change);
    std::string path_under_cursor() const;
    void take_back(bool again);
    void tell(const EditReport &report, const char *how);

    ViewColumn view_of(const Place &place, std::size_t cursor) const;

    Shelf &shelf_;
    std::vector<Column> columns_;
    std::unordered_map<std::string, std::size_t> left_at_; /**< cursors of places that were left */
    std::size_t rows_ = 10;
    bool searching_ = false;
    std::string query_;
    SearchResult found_;
    std::size_t found_cursor_ = 0;
    std::vector<Sjis> picks_;
    std::string message_;
    PickingEnd end_ = PickingEnd::going_on;

    History history_;
    std::optional<Act> asking_;
    std::string answer_, copied_to_; /**< copied_to_: the title that was copied to last */
    bool warned_ = false;            /**< of what an undo will not bring back */
};

} // namespace kigou

#endif
