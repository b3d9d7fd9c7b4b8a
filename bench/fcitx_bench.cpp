// What a key costs in the input method, in one process with fcitx5: from the event until it is
// handled and the candidates stand in the panel. Each time has that of the same key beside it as
// the closed module leaves it alone, by turns. Then what many openings leave in memory.
//
//   fcitx_bench FOLDER-OF-MODULE
#include <fcitx-utils/log.h>
#include <fcitx/candidatelist.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "bench/scratch_sets.h"
#include "tests/fcitx/host.h"

namespace {

using namespace kigou;
namespace fs = std::filesystem;

constexpr std::size_t rounds = 3, samples = 200; // of each the median over the rounds is told
constexpr double browsing = 2, searching = 10;   // milliseconds that a key may take
const std::string trigger = "Control+Alt+comma";
const std::string to_the_first = "Left Left Left Left Left Left ";

/** A key and those that lead to it from the first column. */
struct Case {
    const char *name, *before, *key;
    double limit;
};

const Case opening = {"opening", "", trigger.c_str(), browsing};
const Case keys[] = {opening,
                     {"Down", "", "Down", browsing},
                     {"Page Down", "", "Page_Down", browsing},
                     {"Right, into a title", "", "Right", browsing},
                     {"Down, symbols", "Right", "Down", browsing},
                     {"Page Down, symbols", "Right", "Page_Down", browsing},
                     {"Left", "Right", "Left", browsing},
                     {"Tab", "Right", "Tab", browsing},
                     {"h", "", "h", searching},
                     {"s of hos", "h o", "s", searching},
                     {"i of hoshi", "h o s h", "i", searching},
                     {"Backspace of hoshi", "h o s h i", "BackSpace", searching},
                     {"Right of hoshi", "h o s h i", "Right", searching},
                     {"白", "", "白", searching},
                     {"6 of u+2606", "u + 2 6 0", "6", searching}};

/** What all titles of the generated sets begin with. */
const Case title = {"題", "", "題", searching};

class Bench {
  public:
    explicit Bench(const std::string &prefix) : fcitx_(prefix, folders_.root()) {
        fcitx_.run([&](fcitx::Instance &instance) {
            field_ = std::make_unique<Field>(instance.inputContextManager());
        });
    }
    ~Bench() {
        fcitx_.run([&](fcitx::Instance &) { field_.reset(); });
    }
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;

    const Folders &folders() const { return folders_; }

    void settle() {
        std::this_thread::sleep_for(std::chrono::seconds(2)); // younger files are read again
    }

    void press(const std::string &several) {
        std::istringstream all(several);
        for (std::string key; all >> key;) field_->press(key);
    }

    /** @param into  from the first column to that of the titles or symbols that are gone through */
    void measure(const char *sets, const std::string &into, const Case &one) {
        std::vector<double> medians, lates, closed;
        for (std::size_t round = 0; round < rounds; ++round) {
            std::vector<double> left_alone, times;
            for (std::size_t i = 0; i < samples; ++i) {
                fcitx_.run([&](fcitx::Instance &) {
                    left_alone.push_back(time(one.key == trigger ? "comma" : one.key));
                    if (one.key != trigger) press(trigger + " " + to_the_first + into + one.before);
                    times.push_back(time(one.key));
                    const auto list = field_->inputPanel().candidateList();
                    if (!list || list->size() == 0) throw std::runtime_error(one.name);
                });
                // The window would be drawn here.
                fcitx_.run([&](fcitx::Instance &) { press(to_the_first + trigger); });
            }
            medians.push_back(at(times, 0.5));
            lates.push_back(at(times, 0.99));
            closed.push_back(at(left_alone, 0.5));
        }
        const double median = at(medians, 0.5), late = at(lates, 0.5), alone = at(closed, 0.5);
        std::printf("%-10s %-20s %9.1f %9.1f us %8.2f us, x%-6.0f %5.1f %% of %g ms\n", sets,
                    one.name, median, late, alone, median / alone, late / one.limit / 10,
                    one.limit);
        std::fflush(stdout);
    }

    /** Opens and closes it so many times, and goes through titles and a search meanwhile. */
    void open_often(std::size_t times) {
        for (std::size_t i = 0; i < times; ++i) {
            fcitx_.run(
                [&](fcitx::Instance &) { press(trigger + " Right Down Page_Down Tab h o"); });
            fcitx_.run([&](fcitx::Instance &) { press(to_the_first + trigger); });
        }
    }

  private:
    /** Microseconds. */
    double time(const std::string &key) {
        fcitx::KeyEvent event(field_.get(), fcitx::Key(key));
        const auto begin = std::chrono::steady_clock::now();
        field_->keyEvent(event);
        return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin)
            .count();
    }

    /** What that part of them is below. */
    static double at(std::vector<double> &times, double part) {
        std::ranges::sort(times);
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size()))];
    }

    Folders folders_;
    Fcitx fcitx_;
    std::unique_ptr<Field> field_;
};

std::string resident() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) return line.substr(6);
    }
    return {};
}

void tell_memory(const char *when) {
    const auto open_files = std::distance(fs::directory_iterator("/proc/self/fd"), {});
    std::printf("%-24s %s resident, %zu bytes in use, %td descriptors\n", when, resident().c_str(),
                mallinfo2().uordblks, open_files);
}

} // namespace

int main(int count, char **arguments) {
    if (count != 2) return 2;
    fcitx::Log::setLogRule("default=1,kigou=3"); // not that there is no engine
    Bench bench(arguments[1]);
    const Directories at = bench.folders().directories();
    const auto measure = [&](const char *sets, const std::string &into) {
        for (const Case &one : keys) bench.measure(sets, into, one);
        if (std::string_view(sets) != "shipped") bench.measure(sets, into, title);
    };
    std::printf("%-10s %-20s    median, 99 of 100   when closed\n", "sets", "key");

    fs::copy_file(ACC_DATA "/default.kig", fs::path(at.program) / "default.kig");
    fs::copy_file(ACC_DATA "/extended.kig", fs::path(at.common) / "extended.kig");
    bench.settle();
    measure("shipped", "Right ");

    bench.open_often(100);
    tell_memory("100 openings");
    bench.open_often(9900);
    tell_memory("10,000 openings");

    fs::remove(fs::path(at.program) / "default.kig");
    fs::remove(fs::path(at.common) / "extended.kig");
    bench.folders().put("0.kig", set_of_one_title("例0", 1000));
    bench.settle();
    measure("1 title", "Right Right ");
    for (int i = 0; i < 100; ++i) {
        const std::string number = std::to_string(i);
        bench.folders().put(number + ".kig", set_of_titles("例" + number, 1000));
        if (i != 0 && i != 99) continue;
        bench.settle();
        measure(i == 0 ? "1 set" : "100 sets", "Right ");
    }
}
