// What the browser costs from a key to the bytes for the terminal, and how many bytes those are:
// all that stands between a key and its picture but the terminal itself. Each prints what was
// sent for the key, how much of that is text, the text of the cells that differ, and what a whole
// picture would have been.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/scratch_sets.h"
#include "browser/drawing.h"
#include "browser/keymap.h"
#include "browser/keys.h"
#include "browser/screen.h"
#include "picker/picking/picking.h"

namespace {

using namespace kigou;

constexpr std::size_t most_columns = 8; // of the view, as the browser has it

std::string to_place(std::size_t row, std::size_t column) {
    return "\033[" + std::to_string(row + 1) + ";" + std::to_string(column + 1) + "H";
}

/** As the description of xterm-256color has them. */
const TerminalWords words{
    "\033[H\033[2J",       "\033[K", "\033(B\033[m", "\033(B\033[m\033[7m", "\033(B\033[m\033[1m",
    "\033(B\033[m\033[2m", to_place};

/** Sets of 10,000 symbols each, in 1,000 titles or in one. */
enum Sets { titles, one_title, hundred_files };

const char *const set_names[] = {"1_file", "1_title", "100_files"};

/** They are written once. */
const Folders &folders_with(Sets sets) {
    static std::map<Sets, Folders> all;
    if (const auto there = all.find(sets); there != all.end()) return there->second;
    const Folders &folders = all[sets];
    if (sets == one_title) {
        folders.put("0.kig", set_of_one_title("例0", 1000));
        return folders;
    }
    for (int i = 0; i < (sets == hundred_files ? 100 : 1); ++i) {
        const std::string number = std::to_string(i);
        folders.put(number + ".kig", set_of_titles("例" + number, 1000));
    }
    std::this_thread::sleep_for(std::chrono::seconds(2)); // younger files are read again
    return folders;
}

struct Size {
    std::size_t rows, columns;
};

/** The browser without its terminal. */
class Browsing {
  public:
    Browsing(Sets sets, Size size, const std::string &start)
        : shelf_(folders_with(sets).directories(), Recents(folders_with(sets).state())),
          picking_(shelf_, start) {
        screen_.resize(size.rows, size.columns);
        picking_.set_rows(item_rows(size.rows));
    }

    std::string picture() {
        const View view = picking_.view(most_columns);
        draw(view, key_hints(view), screen_);
        return screen_.update(words);
    }

    std::string whole_picture() {
        screen_.forget();
        return picture();
    }

    /** Presses keys. @return the bytes of the pictures */
    std::string press(const std::vector<Key> &keys) {
        std::string bytes;
        for (const Key &key : keys) {
            const Command command =
                command_of(key, use_of(picking_.is_asking(), picking_.is_searching()));
            if (command.action) picking_.act(*command.action);
            bytes += picture();
        }
        return bytes;
    }

    /** What the browser does while nothing is typed. */
    void prepare() {
        while (shelf_.prepare_index()) continue;
    }

    std::size_t rows() const { return screen_.rows(); }
    std::size_t columns() const { return screen_.columns(); }

  private:
    Shelf shelf_;
    Picking picking_;
    Screen screen_;
};

/** What a terminal does with a picture that begins with a blank screen. */
class Emulator {
  public:
    using Cells = std::vector<std::pair<std::string, std::string>>; /**< text and style */

    Emulator(const Browsing &browsing, const std::string &bytes)
        : columns_(browsing.columns()), cells_(browsing.rows() * columns_, {" ", "m"}) {
        std::string style = "m";
        std::size_t cell = 0;
        for (std::size_t at = 0; at < bytes.size();) {
            std::size_t end = at + 1;
            if (bytes[at] != '\033') {
                while (end < bytes.size() && (bytes[end] & 0xC0) == 0x80) ++end;
                const std::string text = bytes.substr(at, end - at);
                text_bytes_ += text.size();
                cells_[cell++] = {text, style};
                if (cells_of(text) == 2) cells_[cell++] = {"", style};
            } else if (bytes[end] == '(') {
                end += 2;
            } else {
                while (!isalpha(bytes[end])) ++end;
                const std::string word = bytes.substr(at + 2, ++end - at - 2);
                if (word.back() == 'm') style = word;
                if (word.back() == 'H' && word.size() > 1) cell = place(word);
            }
            at = end;
        }
    }

    const Cells &cells() const { return cells_; }
    std::size_t text_bytes() const { return text_bytes_; }

  private:
    std::size_t place(const std::string &word) const {
        const std::size_t middle = word.find(';') + 1;
        return (std::stoul(word) - 1) * columns_ + std::stoul(word.substr(middle)) - 1;
    }

    std::size_t columns_, text_bytes_ = 0;
    Cells cells_;
};

/** What a key may have to wait for soon after the start: the longest part of preparing. */
void longest_preparing(benchmark::State &state, Sets sets) {
    const Folders &folders = folders_with(sets);
    for (auto _ : state) {
        const Shelf shelf(folders.directories(), Recents(folders.state()));
        double longest = 0;
        for (bool more = true; more;) {
            const auto begin = std::chrono::steady_clock::now();
            more = shelf.prepare_index();
            const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
            longest = std::max(longest, took.count());
        }
        state.SetIterationTime(longest);
    }
}

void first_picture(benchmark::State &state, Sets sets, Size size) {
    folders_with(sets);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Browsing(sets, size, "例0").picture().size());
    }
}

const Key down{KeyName::down}, up{KeyName::up}, page_down{KeyName::page_down},
    page_up{KeyName::page_up}, right{KeyName::right}, left{KeyName::left}, tab{KeyName::tab},
    back_tab{KeyName::back_tab}, escape{KeyName::escape}, find{KeyName::f3},
    all_of_it{KeyName::control, "u"};

Key letter(const char *text) {
    return {KeyName::text, text};
}

/** A key that is measured, what leads to it, and what leads back to where it began. */
struct Case {
    const char *name;
    std::vector<Sets> sets;
    const char *start;
    std::vector<Key> before;
    Key key;
    std::vector<Key> after;
    enum { indexed, fresh, prepared } index = indexed; /**< of the sets; fresh: there is none */
};

const std::vector<Sets> many_titles{titles, hundred_files}, all{titles, one_title, hundred_files};

const Case cases[] = {
    {"down_to_a_set", {hundred_files}, "例0", {left}, down, {up}},
    {"down_to_a_title", many_titles, "例0", {}, down, {up}},
    {"down_to_a_symbol", all, "例0／題0／1", {}, down, {up}},
    {"page_down_in_titles", many_titles, "例0", {}, page_down, {page_up}},
    {"page_down_in_symbols", {one_title}, "例0／題0／1", {}, page_down, {page_up}},
    {"into_a_title", all, "例0／題0", {}, right, {left}},
    {"back_from_a_title", all, "例0／題0／1", {}, left, {right}},
    {"next_title", many_titles, "例0／題0／1", {}, tab, {back_tab}},
    {"search_that_reads_all_sets", all, "例0", {}, find, {escape}, Case::fresh},
    {"search_that_was_prepared", all, "例0", {}, find, {escape}, Case::prepared},
    {"first_letter", all, "例0", {find}, letter("y"), {all_of_it, escape}},
    {"third_letter",
     all,
     "例0",
     {find, letter("y"), letter("a")},
     letter("j"),
     {all_of_it, escape}},
    {"letter_in_all_titles", many_titles, "例0", {find}, letter("題"), {all_of_it, escape}},
};

void count_bytes(benchmark::State &state, Browsing &browsing, const Case &one) {
    browsing.press(one.before);
    const Emulator before(browsing, browsing.whole_picture());
    const std::string sent = browsing.press({one.key});
    const std::string whole = browsing.whole_picture();
    const Emulator after(browsing, whole);
    std::size_t differs = 0;
    for (std::size_t i = 0; i < after.cells().size(); ++i) {
        if (after.cells()[i] != before.cells()[i]) differs += after.cells()[i].first.size();
    }
    browsing.press(one.after);
    const auto count = [&](const char *name, std::size_t bytes) {
        state.counters[name] = static_cast<double>(bytes);
    };
    count("sent", sent.size());
    count("text", Emulator(browsing, sent).text_bytes());
    count("differs", differs);
    count("whole", whole.size());
}

void key(benchmark::State &state, const Case &one, Sets sets, Size size) {
    auto browsing = std::make_unique<Browsing>(sets, size, one.start);
    count_bytes(state, *browsing, one);
    for (auto _ : state) {
        state.PauseTiming();
        if (one.index != Case::indexed) {
            browsing = std::make_unique<Browsing>(sets, size, one.start);
        }
        if (one.index == Case::prepared) browsing->prepare();
        browsing->press(one.before);
        state.ResumeTiming();
        benchmark::DoNotOptimize(browsing->press({one.key}).size());
        state.PauseTiming();
        browsing->press(one.after);
        state.ResumeTiming();
    }
}

void register_all() {
    for (const Sets sets : all) {
        benchmark::RegisterBenchmark((std::string("longest_preparing/") + set_names[sets]).c_str(),
                                     [=](auto &state) { longest_preparing(state, sets); })
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
    for (const Size size : {Size{24, 80}, Size{60, 200}}) {
        const auto add = [&](const std::string &name, Sets sets, auto function) {
            const std::string full = name + "/" + set_names[sets] + "/" +
                                     std::to_string(size.columns) + "x" + std::to_string(size.rows);
            return benchmark::RegisterBenchmark(full.c_str(), function)
                ->Unit(benchmark::kMicrosecond);
        };
        for (const Sets sets : all) {
            add("first_picture", sets, [=](auto &state) { first_picture(state, sets, size); });
        }
        for (const Case &one : cases) {
            for (const Sets sets : one.sets) {
                auto *const bench =
                    add(one.name, sets, [=, &one](auto &state) { key(state, one, sets, size); });
                // What leads to these takes a thousand times as long.
                if (one.index != Case::indexed) bench->Iterations(20);
            }
        }
    }
}

} // namespace

int main(int argc, char **argv) {
    benchmark::AddCustomContext("compiler", ACC_COMPILER);
    benchmark::AddCustomContext("flags", ACC_FLAGS);
    benchmark::AddCustomContext("set of 1,000 titles, bytes",
                                std::to_string(set_of_titles("例0", 1000).size()));
    register_all();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
