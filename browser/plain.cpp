// plain.cpp - see plain.h. Whoever listens hears what changed, the most telling first, and never
// more than a page at a time.
#include "browser/plain.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "browser/line_terminal.h"
#include "browser/plain_commands.h"
#include "browser/screen.h"
#include "picker/codes.h"
#include "picker/picking/picking.h"
#include "picker/search/readings.h"

namespace kigou {
namespace {

constexpr std::size_t page = 20;

std::string symbol_line(const Sjis &symbol) {
    const SymbolCodes codes = codes_of(symbol);
    const SymbolNames *const names = names_of(symbol);
    const std::string name = names                   ? std::string(names->name)
                             : codes.unicode.empty() ? "SJIS " + codes.sjis
                                                     : codes.unicode;
    return (codes.symbol == "\u3000" ? "[空白]" : codes.symbol) + " " + name;
}

std::string item_line(const PlaceItem &item) {
    switch (item.kind) {
        case ItemKind::symbol:
            return symbol_line(item.symbol);
        case ItemKind::recent:
            return item.label + ", recent picks";
        case ItemKind::set:
            return item.label + ", set";
        case ItemKind::title:
            break;
    }
    return item.label + (item.below ? ", titles below" : ", title");
}

const ViewColumn &current(const View &view) {
    return view.columns[view.current];
}

/** "items 1 to 20 of 93". */
std::string extent(const ViewColumn &column) {
    if (column.total == 0) return "nothing here";
    return "items " + std::to_string(column.first + 1) + " to " +
           std::to_string(column.first + column.items.size()) + " of " +
           std::to_string(column.total);
}

std::vector<std::string> lines_of(const ViewColumn &column) {
    std::vector<std::string> lines;
    std::size_t number = column.first;
    for (const PlaceItem &item : column.items)
        lines.push_back(std::to_string(++number) + " " + item_line(item));
    return lines;
}

std::string line_under_cursor(const ViewColumn &column) {
    return column.cursor ? lines_of(column)[*column.cursor] : extent(column);
}

bool is_same_place(const View &one, const View &other) {
    return current(one).path == current(other).path && one.searching == other.searching &&
           one.query == other.query;
}

std::string heading(const View &view) {
    if (view.searching) return std::to_string(current(view).total) + " found";
    return current(view).path.empty() ? "all sets" : current(view).path;
}

class PlainBrowser {
  public:
    PlainBrowser(Shelf &shelf, int terminal, const BrowseStart &start)
        : terminal_(terminal), picking_(shelf, start.path) {
        picking_.offer(start.leftovers);
        picking_.set_rows(page);
    }

    std::vector<Sjis> run(const std::string &greeting) {
        say(greeting);
        look();
        if (!view_.message.empty()) say(view_.message);
        say_place();
        while (picking_.end() == PickingEnd::going_on) {
            terminal_.write(std::exchange(said_, {}) + shown_text(prompt()));
            const auto line = terminal_.read_line();
            if (!line) {
                terminal_.write("\n");
                return {};
            }
            if (view_.asking.empty() && picking_.look()) {
                // Numbers that were told may be those of other items by now.
                look();
                say(view_.message + "; nothing was done");
                say_place();
            } else if (view_.asking.empty()) {
                take(*line);
            } else {
                answer(*line);
            }
        }
        return picking_.picks();
    }

  private:
    void say(const std::string &line) { said_ += shown_text(line) + "\n"; }

    void look() { view_ = picking_.view(1); }

    std::string prompt() const {
        if (view_.asking.empty()) return "> ";
        const std::string proposal =
            view_.answer.empty() ? "" : ", an empty line for " + view_.answer;
        return view_.asking + proposal + ", a dot for none: ";
    }

    void take(const std::string &line) {
        const std::size_t help_from = std::exchange(help_from_, 0);
        if (help_from != 0 && folded_line(line).empty()) return say_help(help_from);
        const TypedCommand typed = understand(line, !picking_.picks().empty());
        if (!typed.command) return say(typed.text);
        if (typed.item && !point(*typed.item)) return;
        using Own = PlainCommand::Own;
        switch (typed.command->own) {
            case Own::help:
                return say_help(0);
            case Own::list:
                say_place();
                if (!view_.picks.empty()) say_picks();
                return;
            case Own::tell:
                return say_item();
            case Own::none:
                break;
        }
        if (typed.command->takes == Behind::text) return find(typed.text);
        act({*typed.command->act});
    }

    /** @return whether there is an item of that number */
    bool point(std::size_t number) {
        const std::size_t items = current(view_).total;
        if (number == 0 || number > items) {
            say("no such item; there are " + std::to_string(items));
            return false;
        }
        picking_.act({.act = Act::point, .number = number - 1});
        look();
        return true;
    }

    void find(const std::string &text) {
        picking_.act({Act::search}); // which goes on with what was looked for before
        if (!picking_.view(1).query.empty()) picking_.act({Act::search});
        picking_.act({Act::type, text});
        look();
        if (!view_.message.empty()) say(view_.message);
        say_place();
    }

    /** Does what was typed at a question. */
    void answer(const std::string &line) {
        const std::string typed = folded_line(line);
        if (typed == ".") return act({Act::back});
        if (!typed.empty()) {
            for (; !view_.answer.empty(); look()) picking_.act({Act::erase});
            picking_.act({Act::type, line});
        }
        act({Act::enter});
    }

    /** Does one thing and says what is other than before. */
    void act(const Action &action) {
        const View before = std::move(view_);
        const std::size_t picks = picking_.picks().size();
        picking_.act(action);
        look();
        if (picking_.end() != PickingEnd::going_on) return;
        const ViewColumn &was = current(before), &is = current(view_);
        const std::size_t said = said_.size();
        if (!view_.message.empty()) say(view_.message);
        if (picking_.picks().size() > picks) {
            say("taken " + symbol_line(picking_.picks().back()));
        } else if (picking_.picks().size() < picks) {
            say_picks();
        }
        if (!is_same_place(before, view_)) {
            say_place();
        } else if (was.first != is.first) {
            say_items();
        } else if (was.total != is.total || lines_of(was) != lines_of(is)) {
            say("now " + line_under_cursor(is));
        }
        if (said_.size() == said && view_.asking.empty()) say("nothing changed; " + extent(is));
    }

    void say_place() {
        say(heading(view_));
        say_items();
    }

    void say_items() {
        const ViewColumn &column = current(view_);
        for (const std::string &line : lines_of(column)) say(line);
        if (column.total == 0 && !view_.searching) say(extent(column));
        const bool more = column.first + column.items.size() < column.total;
        if (more) say(extent(column) + "; an empty line for more");
        if (!more && column.first != 0) say(extent(column));
    }

    void say_picks() { say(view_.picks.empty() ? "nothing taken" : "taken " + view_.picks); }

    /** All that there is to say of the item under the cursor. */
    void say_item() {
        const View view = picking_.view(2);
        const ViewColumn &column = current(view);
        say(line_under_cursor(column));
        if (view.columns.size() > view.current + 1)
            say("items in it: " + std::to_string(view.columns.back().total));
        if (!view.symbol) return;
        const auto add = [&](const char *name, const std::string &value) {
            if (!value.empty()) say(name + value);
        };
        add("readings ", view.symbol->readings);
        add("", view.symbol->unicode);
        add("kuten ", view.symbol->kuten);
        add("SJIS ", view.symbol->sjis);
        add("JIS ", view.symbol->jis);
        add("EUC ", view.symbol->euc);
        add("in ", column.items[*column.cursor].path);
    }

    void say_help(std::size_t from) {
        const std::vector<std::string> lines = plain_help();
        const std::size_t end = std::min(from + page, lines.size());
        for (std::size_t i = from; i < end; ++i) say(lines[i]);
        if (end == lines.size()) return;
        say("an empty line for more");
        help_from_ = end;
    }

    LineTerminal terminal_;
    Picking picking_;
    View view_;
    std::string said_;          /**< since the last prompt */
    std::size_t help_from_ = 0; /**< where an empty line goes on with the help; 0 is nowhere */
};

} // namespace

std::vector<Sjis> browse_plain(Shelf &shelf, int terminal, const BrowseStart &start,
                               const std::string &greeting) {
    return PlainBrowser(shelf, terminal, start).run(greeting);
}

} // namespace kigou
