// browse.cpp - see browse.h.
#include "browser/browse.h"

#include <optional>

#include "browser/drawing.h"
#include "browser/keymap.h"
#include "browser/keys.h"
#include "browser/screen.h"
#include "browser/terminal.h"

namespace kigou {
namespace {

constexpr int escape_wait = 50;  // milliseconds until an escape is one by itself
constexpr int look_again = 1000; // milliseconds between looks at what other programs do
constexpr std::size_t most_columns = 8;

/** A character that is no command, also where it is typed. */
bool is_typed(const Key &key) {
    return key.name == KeyName::text && !key.alt && as_command(key.text) != " ";
}

class Browser {
  public:
    Browser(Shelf &shelf, int terminal, const BrowseStart &start)
        : shelf_(shelf), terminal_(terminal), picking_(shelf, start.path) {
        picking_.offer(start.leftovers);
    }

    std::vector<Sjis> run() {
        draw();
        while (picking_.end() == PickingEnd::going_on) {
            const std::vector<Key> keys = read();
            for (std::size_t i = 0; i < keys.size(); ++i) {
                Key key = keys[i];
                // A click is at what the keys before it made to be shown.
                if (key.name == KeyName::click) draw();
                // What was pasted without marks is looked for once, and not at each character.
                const bool typing = is_typed(key) && use_of(picking_.view(1)) != KeyUse::commands;
                while (typing && i + 1 < keys.size() && is_typed(keys[i + 1])) {
                    key.text += keys[++i].text;
                }
                press(key);
            }
            if (!keys.empty() || resized() || picking_.look()) draw();
        }
        return picking_.picks();
    }

  private:
    bool resized() const {
        return terminal_.size() != Terminal::Size{screen_.rows(), screen_.columns()};
    }

    void draw() {
        if (resized()) {
            const Terminal::Size size = terminal_.size();
            screen_.resize(size.rows, size.columns);
            picking_.set_rows(item_rows(size.rows));
        }
        view_ = picking_.view(most_columns);
        if (help_) {
            help_end_ = *help_ + draw_help(key_help(), *help_, screen_);
        } else {
            drawn_ = kigou::draw(view_, key_hints(view_), screen_);
        }
        terminal_.write(screen_.update(terminal_.words()));
    }

    /** Keys that are there, once there is one; none when there is something else to look at. */
    std::vector<Key> read() {
        std::vector<Key> keys;
        // While nothing is typed the search is made ready.
        const bool busy = shelf_.prepare_index();
        reader_.take(terminal_.read(busy ? 0 : look_again));
        while (auto key = reader_.next(false)) keys.push_back(std::move(*key));
        if (reader_.is_empty()) return keys;
        reader_.take(terminal_.read(escape_wait));
        while (auto key = reader_.next(true)) keys.push_back(std::move(*key));
        return keys;
    }

    void press(const Key &key) {
        if (help_) {
            const bool leaves = key.name == KeyName::escape || as_command(key.text) == "q";
            const bool more = help_end_ < key_help().size() && !leaves;
            help_ = more ? std::optional(help_end_) : std::nullopt;
            return;
        }
        if (key.name == KeyName::click) return click(key);
        const Command command = command_of(key, use_of(picking_.view(1)));
        if (command.own == Command::Own::help) help_ = 0;
        if (command.own == Command::Own::redraw) screen_.forget();
        if (command.action) picking_.act(*command.action);
    }

    /** To an item of the current column; a second click enters it. One in a column before: back. */
    void click(const Key &key) {
        for (const DrawnItem &column : drawn_) {
            if (key.column < column.column || key.column >= column.column + column.cells) continue;
            const ViewColumn &items = view_.columns[column.number];
            if (key.row == 0 || key.row > items.items.size()) return;
            for (std::size_t i = column.number; i < view_.current; ++i) picking_.act({Act::back});
            if (column.number > view_.current) picking_.act({Act::enter_title});
            const std::size_t item = items.first + key.row - 1;
            const bool again = column.number == view_.current && items.cursor == key.row - 1;
            picking_.act({.act = Act::point, .number = item});
            if (again) picking_.act({Act::enter});
            return;
        }
    }

    Shelf &shelf_;
    Terminal terminal_;
    Picking picking_;
    Screen screen_;
    KeyReader reader_;
    View view_;
    std::vector<DrawnItem> drawn_;
    std::optional<std::size_t> help_; /**< the first line of the help that is shown */
    std::size_t help_end_ = 0;
};

} // namespace

std::vector<Sjis> browse(Shelf &shelf, int terminal, const BrowseStart &start) {
    return Browser(shelf, terminal, start).run();
}

} // namespace kigou
