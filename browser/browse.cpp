// browse.cpp - see browse.h.
#include "browser/browse.h"

#include <chrono>
#include <optional>

#include "browser/drawing.h"
#include "browser/keymap.h"
#include "browser/keys.h"
#include "browser/screen.h"
#include "browser/terminal.h"

namespace kigou {
namespace {

/** How long the rest of what has begun may take. */
std::chrono::milliseconds wait_for(KeyReader::Rest rest) {
    using std::chrono::milliseconds;
    if (rest == KeyReader::Rest::escape) return milliseconds(50); // else it is a key by itself
    return rest == KeyReader::Rest::paste ? milliseconds(20000) : milliseconds(2000);
}

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
                const bool typing = is_typed(key) && use() != KeyUse::commands;
                while (typing && i + 1 < keys.size() && is_typed(keys[i + 1])) {
                    key.text += keys[++i].text;
                }
                press(key);
            }
            const bool away = terminal_.was_away();
            if (away) screen_.forget();
            if (!keys.empty() || away || resized() || picking_.look()) draw();
        }
        return picking_.picks();
    }

  private:
    KeyUse use() const { return use_of(picking_.is_asking(), picking_.is_searching()); }

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
            help_end_ = *help_ + draw_help(key_help(screen_.columns()), *help_, screen_);
        } else {
            drawn_ = kigou::draw(view_, key_hints(view_), screen_);
        }
        // Input methods show what is not yet a character where the cursor is.
        terminal_.write(screen_.update(terminal_.words()) +
                        terminal_.words().to_place(drawn_.row, drawn_.column));
    }

    /** Keys that are there, once there is one; none when there is something else to look at. */
    std::vector<Key> read() {
        std::vector<Key> keys;
        // While nothing is typed the search is made ready.
        const bool busy = shelf_.prepare_index();
        reader_.take(terminal_.read(busy ? 0 : look_again));
        while (auto key = reader_.next(false)) keys.push_back(std::move(*key));
        while (reader_.rest() != KeyReader::Rest::nothing) {
            const std::string more = read_rest();
            reader_.take(more);
            // A paste that never ends is dropped: nobody typed it.
            if (more.empty() && reader_.rest() == KeyReader::Rest::paste) reader_ = KeyReader();
            while (auto key = reader_.next(more.empty())) keys.push_back(std::move(*key));
        }
        return keys;
    }

    /** More bytes of what has begun; none when nothing came for as long as that may take. */
    std::string read_rest() {
        using Clock = std::chrono::steady_clock;
        const auto until = Clock::now() + wait_for(reader_.rest());
        for (;;) {
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
            if (left <= 0) return {};
            // A window of another size ends a read too.
            std::string more = terminal_.read(static_cast<int>(left));
            if (!more.empty()) return more;
        }
    }

    void press(const Key &key) {
        if (help_) {
            const bool interrupt = key.name == KeyName::control && key.text == "c";
            const bool leaves =
                interrupt || key.name == KeyName::escape || as_command(key.text) == "q";
            const bool more = help_end_ < key_help(screen_.columns()).size() && !leaves;
            help_ = more ? std::optional(help_end_) : std::nullopt;
            return;
        }
        if (key.name == KeyName::click) return click(key);
        const Command command = command_of(key, use());
        if (command.own == Command::Own::help) help_ = 0;
        if (command.own == Command::Own::redraw) screen_.forget();
        if (command.action) picking_.act(*command.action);
    }

    /** To an item of the current column; a second click enters it. One in a column before: back. */
    void click(const Key &key) {
        for (const DrawnItem &column : drawn_.columns) {
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
    Drawn drawn_;
    std::optional<std::size_t> help_; /**< the first line of the help that is shown */
    std::size_t help_end_ = 0;
};

} // namespace

std::vector<Sjis> browse(Shelf &shelf, int terminal, const BrowseStart &start) {
    return Browser(shelf, terminal, start).run();
}

} // namespace kigou
