// picking.h - picking a symbol, as a value: actions go in, a view comes out. A front end maps its
// keys to actions and draws the view; it decides nothing.
//
// What is picked from stands in columns: all sets, a set, a title in it, and so on. One of them is
// current and has the cursor; what the cursor stands on is shown in a column behind it. A column
// has pages of as many items as the front end has rows for.
#ifndef KIGOU_PICKER_PICKING_PICKING_H
#define KIGOU_PICKER_PICKING_PICKING_H

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "picker/failure.h"
#include "picker/picking/place.h"
#include "picker/picking/set_edits.h"
#include "picker/recovery.h"
#include "picker/search/search.h"

namespace kigou {

enum class Act {
    next, /**< to the next item, on the next page too; of a question the next answer */
    previous,
    next_page, /**< to the first item of the next page */
    previous_page,
    first,
    last,
    point,         /**< to the item of that number, from 0 in the column */
    enter,         /**< into a set or title; a symbol is taken, and that ends it */
    enter_title,   /**< the same, but a symbol is left alone */
    back,          /**< to the column before, or out of the search; at the first nothing happens */
    all_sets,      /**< to the first column, the cursor on the set that one was in */
    take,          /**< takes the symbol under the cursor and ends */
    take_and_stay, /**< takes it and goes on */
    take_number,   /**< goes to the item of that number on the page, from 1, and enters it */
    digit,         /**< adds a digit to the number of an item on the page, and goes to it; one
                        that cannot go on is entered */
    drop_pick,     /**< gives the last pick back */
    next_title, /**< to the next title of the set, whatever its level; behind the last the first */
    previous_title,
    next_sibling, /**< to the next title or set of the column before, behind the last the first */
    previous_sibling,
    search,         /**< opens the search, empty, or goes back into it */
    type,           /**< adds the text to what is searched for, or to an answer; else it begins a
                       search for it */
    erase,          /**< takes its last character away */
    show,           /**< from what the search found to where it stands */
    next_found,     /**< to the next place of what was found last, the first behind the last */
    previous_found, /**< to the one before */
    complete,       /**< an answer that is a path, as far as it is certain */
    copy_to,        /**< asks for a title of one's own; the symbol, or the picks, are added to it */
    move_to,        /**< asks for a title to move the symbol or the title under the cursor to */
    add_symbols,    /**< asks for symbols to put behind the cursor */
    new_title,      /**< asks for a title to make below this one; among the sets, for a new set */
    rename,         /**< asks for another name of the title or set under the cursor */
    remove,         /**< removes the symbol, title or set under the cursor */
    raise,          /**< moves the symbol or title under the cursor before the one before it */
    lower,          /**< moves it behind the one behind it */
    undo,           /**< takes the last edit back; once more for one that cannot be exactly */
    redo,
    save,   /**< says that there is nothing to save */
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
    bool read_only = false;              /**< of a set that cannot be changed */
    std::optional<std::size_t> cursor{}; /**< among items; none in the column behind the current */
};

struct View {
    std::vector<ViewColumn> columns; /**< from all sets on, as far as the window goes */
    std::size_t current = 0;         /**< number of the one with the cursor */
    bool searching = false;          /**< the current column is what was found for query */
    std::string query;
    std::string asking; /**< what is asked for, when type and erase change the answer; else empty */
    std::string answer;
    std::string number;               /**< digits that were typed so far; often empty */
    std::optional<SymbolTold> symbol; /**< under the cursor */
    std::string picks;                /**< taken so far, UTF-8, in their order */
    bool can_undo = false;
    std::string message; /**< what there is to say of the last action; often empty */
};

enum class PickingEnd { going_on, done, cancelled };

/** What the first column has. */
enum class FirstColumn {
    sets,  /**< every set; without a start it begins in the standard set */
    opened /**< the titles of the standard set when there is no other; without a start it begins
                here. For a front end that edits no titles. */
};

class Picking {
  public:
    /**
     * @param shelf  must live longer
     * @param start  full path of a title to begin at, or recents_title; empty: see FirstColumn
     * @throws Failure when the set to begin in cannot be read
     */
    explicit Picking(Shelf &shelf, const std::string &start = {},
                     FirstColumn first = FirstColumn::sets);

    /**
     * Does one thing. Never throws for what is on disk: the message says what could not be. An
     * edit is saved at once, under the locks, and can be undone while this lives.
     */
    void act(const Action &action);

    /**
     * Asks for each file that a killed process left whether its edit is to be kept; those that
     * were kept already are told. What is not answered stays as it is.
     */
    void offer(const std::vector<Leftover> &leftovers);

    /** Shows what other programs changed. @return whether there is something else to draw */
    bool look();

    /** How many items a page has; 1 at least. */
    void set_rows(std::size_t rows) { rows_ = rows == 0 ? 1 : rows; }

    /** @param most_columns  the last ones, the current among them; 1 at least */
    View view(std::size_t most_columns) const;

    /** What typed characters are: an answer, what is looked for, or neither. */
    bool is_asking() const { return asking_.has_value(); }
    bool is_searching() const { return searching_; }

    PickingEnd end() const { return end_; }

    /** Symbols at and below that item of the current column; nothing for one that is no title. */
    std::optional<std::size_t> symbols_below(std::size_t index) const;

    /** Symbols that were taken, in their order; none after a cancel. */
    const std::vector<Sjis> &picks() const { return picks_; }

    /** Looks at the disk again, and stays where it is as far as that is still there. */
    void refresh();

  private:
    struct Column {
        Place place;
        std::size_t cursor = 0;
    };

    enum class Asked { copy_to, move_to, add_symbols, new_title, rename, keep_leftover };

    /** What is asked, of what it was asked, and the answers to choose from. */
    struct Question {
        Asked what;
        std::string answer{};
        std::string of{}; /**< full path of a title or set */
        std::vector<Sjis> symbols{};
        std::optional<ShownTitle> title{}; /**< what is moved, or what the symbols are in */
        std::size_t place = 0;             /**< byte of the data of that title */
        std::vector<std::string> choices{};
        std::size_t choice = 0;
        std::string missing{}; /**< a title that there is not; the same answer makes it */
        Leftover leftover{};   /**< keep_leftover */
    };

    Column &current() { return columns_.back(); }
    const Column &current() const { return columns_.back(); }
    std::size_t size() const { return searching_ ? found_.found.size() : current().place.size(); }
    std::size_t &cursor() { return searching_ ? found_cursor_ : current().cursor; }
    std::size_t cursor() const { return searching_ ? found_cursor_ : current().cursor; }
    std::optional<Sjis> symbol() const;

    // Going about, in picking.cpp.
    void go(const Action &action);
    Place first_column();
    void move_to(std::size_t index);
    void move_to_found(std::size_t index);
    void push(Place place);
    void enter();
    void back();
    bool take();
    void take_digit(std::size_t digit);
    void step_title(bool forward);
    void step_sibling(bool forward);
    void go_to(const std::string &path);
    void go_to_title(const std::shared_ptr<const Snapshot> &snapshot, std::size_t number);

    // The search, in picking_search.cpp.
    bool search_action(const Action &action);
    void look_for(const std::string &query);
    void show_found();
    void step_found(bool forward);

    // Questions, in questions.cpp, and their answers, in answers.cpp.
    bool question_action(const Action &action);
    void ask(Act what);
    void ask_to_copy();
    void ask_to_move();
    void ask_for_symbols();
    void ask_where(Question question);
    void ask_for_name(bool new_one);
    std::string question() const;
    std::vector<std::string> own_titles(bool with_sets) const;
    void choose(bool forward);
    void complete();
    void drop();
    void answer();
    void do_asked(const Question &asked);
    void put_elsewhere(const Question &asked);
    void add_typed(const Question &asked);
    void offer_next();
    std::string told_beside(const Sjis &text, const std::string &title) const;
    void keep_leftover(const Leftover &leftover, const std::string &name);

    // Edits without a question, in picking_edits.cpp.
    bool edit_action(const Action &action);
    void tell(std::string done);
    void tell(const Failure &failure);
    void remove();
    void move_item(bool down);
    std::size_t place_in_data() const;
    static Sjis without_pair(const ShownTitle &title, std::size_t place);
    std::optional<ShownTitle> title_under_cursor() const;
    ShownTitle shown() const;
    std::string path_under_cursor() const;
    void refuse_read_only(bool item) const;

    // The view, in picking_view.cpp.
    PlaceItem found_item(std::size_t index) const;
    ViewColumn view_of(const Place &place, std::size_t cursor) const;

    Shelf &shelf_;
    SetEdits edits_;
    FirstColumn first_;
    std::vector<Column> columns_;
    std::unordered_map<std::string, std::size_t> left_at_; /**< cursors of places that were left */
    std::size_t rows_ = 10;
    std::size_t number_ = 0; /**< that was typed so far */
    std::vector<Sjis> picks_;
    std::string message_;
    PickingEnd end_ = PickingEnd::going_on;

    bool searching_ = false;
    std::string query_;
    SearchResult found_;
    std::size_t found_cursor_ = 0;
    std::size_t found_title_ = 0; /**< of the titles with that symbol, the one that was gone to */
    bool found_is_old_ = false;   /**< its titles have other numbers by now */

    std::optional<Question> asking_;
    std::deque<std::string> targets_; /**< titles that were copied or moved to, newest first */
    std::deque<Leftover> leftovers_;  /**< to be offered */
};

} // namespace kigou

#endif
