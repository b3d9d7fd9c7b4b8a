// panel.cpp - see panel.h.
#include "fcitx/panel.h"

#include <fcitx-utils/i18n.h>
#include <fcitx/candidatelist.h>
#include <fcitx/inputpanel.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "picker/search/kana.h"
#include "picker/search/readings.h"

namespace kigou {
namespace {

using fcitx::Text;

constexpr std::size_t most_of_title = 30, most_of_path = 40, most_of_message = 120; // characters

struct ItemText {
    std::string label, comment;
};

class Candidate : public fcitx::CandidateWord {
  public:
    Candidate(const ItemText &item, std::size_t number, Clicked clicked)
        : CandidateWord(Text(item.label)), number_(number), clicked_(std::move(clicked)) {
        if (item.comment.empty()) return;
#if KIGOU_CANDIDATES_HAVE_COMMENTS
        setComment(Text(item.comment));
#else
        setText(Text(item.label + "  " + item.comment));
#endif
    }

    void select(fcitx::InputContext *) const override {
        const Clicked clicked = clicked_; // the list goes, and this with it
        clicked({.act = Act::take_number, .number = number_});
    }

  private:
    std::size_t number_;
    Clicked clicked_;
};

/** A page of a column. The picking has the others, so that none is made before it is shown. */
class Page : public fcitx::CandidateList,
             public fcitx::PageableCandidateList,
             public fcitx::CursorMovableCandidateList {
  public:
    Page(const ViewColumn &column, const std::vector<ItemText> &texts, Clicked clicked)
        : cursor_(column.cursor ? static_cast<int>(*column.cursor) : -1),
          before_(column.first != 0),
          after_(column.first + column.items.size() < column.total),
          clicked_(std::move(clicked)) {
        setPageable(this);
        setCursorMovable(this);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            labels_.emplace_back(std::to_string((i + 1) % 10) + " ");
            candidates_.push_back(std::make_unique<Candidate>(texts[i], i + 1, clicked_));
        }
    }

    const Text &label(int index) const override {
        return labels_.at(static_cast<std::size_t>(index));
    }
    const fcitx::CandidateWord &candidate(int index) const override {
        return *candidates_.at(static_cast<std::size_t>(index));
    }
    int size() const override { return static_cast<int>(candidates_.size()); }
    int cursorIndex() const override { return cursor_; }
    fcitx::CandidateLayoutHint layoutHint() const override {
        return fcitx::CandidateLayoutHint::Vertical;
    }

    bool hasPrev() const override { return before_; }
    bool hasNext() const override { return after_; }
    bool usedNextBefore() const override { return true; }
    void prev() override { click(Act::previous_page); }
    void next() override { click(Act::next_page); }
    void prevCandidate() override { click(Act::previous); }
    void nextCandidate() override { click(Act::next); }

  private:
    void click(Act act) const {
        const Clicked clicked = clicked_; // this goes as well
        clicked({act});
    }

    std::vector<Text> labels_;
    std::vector<std::unique_ptr<Candidate>> candidates_;
    int cursor_;
    bool before_, after_;
    Clicked clicked_;
};

/** A text for a window that is as wide as its widest line. */
std::string fitting(const std::string &text, std::size_t most) {
    const std::string shown = printable(text);
    const std::string beginning = beginning_of(shown, most);
    return beginning == shown ? shown : beginning + "…";
}

/** Of a path the end tells more. */
std::string fitting_path(const std::string &path) {
    const std::u32string characters = to_characters(printable(path));
    if (characters.size() <= most_of_path) return printable(path);
    std::string end = "…";
    for (const char32_t one : characters.substr(characters.size() - most_of_path)) {
        end += to_utf8(one);
    }
    return end;
}

ItemText text_of(const PlaceItem &item, std::optional<std::size_t> symbols) {
    ItemText text{fitting(item.label, most_of_title),
                  symbols ? std::to_string(*symbols) : std::string()};
    if (const SymbolNames *const names = item.symbol.empty() ? nullptr : names_of(item.symbol)) {
        text.comment = names->name;
    }
    if (!item.path.empty())
        text.comment += (text.comment.empty() ? "" : "  ") + fitting_path(item.path);
    return text;
}

std::string codes_of(const SymbolTold &symbol) {
    std::string text = _("kuten") + (" " + symbol.kuten);
    text += "  JIS " + symbol.jis + "  Shift_JIS " + symbol.sjis;
    return symbol.unicode.empty() ? text : text + "  " + symbol.unicode;
}

std::string upper_line(const View &view) {
    std::string text = view.columns.empty() ? "" : fitting_path(view.columns.front().path);
    if (view.searching) {
        text = std::string(_("Search")) + "  " + std::to_string(view.columns.front().total);
    } else if (text.empty()) {
        text = _("Symbols");
    }
    return view.message.empty() ? text : text + "  " + fitting(view.message, most_of_message);
}

/** What was typed, and how it is read where that is another text; never committed. */
Text preedit_of(const std::string &query) {
    const fcitx::TextFormatFlags own{fcitx::TextFormatFlag::Underline,
                                     fcitx::TextFormatFlag::DontCommit};
    Text text(query, own);
    text.setCursor(static_cast<int>(query.size()));
    const std::string typed = folded(query);
    const auto readings = typed_readings(typed);
    const auto whole = std::ranges::find(readings, false, &TypedReading::unfinished);
    if (whole != readings.end() && whole->kana != typed) text.append("  " + whole->kana, own);
    return text;
}

void update(fcitx::InputContext &field) {
    field.updatePreedit();
    field.updateUserInterface(fcitx::UserInterfaceComponent::InputPanel);
}

} // namespace

void show_panel(fcitx::InputContext &field, const Opening &opening, PanelStyle style,
                const Clicked &clicked) {
    const View view = opening.view();
    fcitx::InputPanel &panel = field.inputPanel();
    panel.reset();
    panel.setAuxUp(Text(upper_line(view)));
    if (view.searching && !style.preedit_in_window &&
        field.capabilityFlags().test(fcitx::CapabilityFlag::Preedit)) {
        panel.setClientPreedit(preedit_of(view.query));
    } else if (view.searching) {
        panel.setAuxUp(Text(upper_line(view) + "  ")); // a window has both in one line
        panel.setPreedit(preedit_of(view.query));
    }
    if (view.symbol && style.codes) panel.setAuxDown(Text(codes_of(*view.symbol)));
    if (!view.columns.empty() && view.columns.front().total != 0) {
        const ViewColumn &column = view.columns.front();
        std::vector<ItemText> texts;
        for (std::size_t i = 0; i < column.items.size(); ++i) {
            texts.push_back(text_of(column.items[i], opening.symbols_below(column.first + i)));
        }
        panel.setCandidateList(std::make_unique<Page>(column, texts, clicked));
    }
    update(field);
}

void hide_panel(fcitx::InputContext &field) {
    field.inputPanel().reset();
    update(field);
}

} // namespace kigou
