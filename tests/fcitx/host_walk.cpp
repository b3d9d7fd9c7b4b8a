// A random walk of keys, clicks and what else happens to a text field, in one process with
// fcitx5. The text changes by symbols that were shown and by nothing else; while the symbols are
// closed the panel is empty and keys are the application's; nothing goes wrong in the log.
//
//   host_walk FOLDER-OF-MODULE [STEPS [SEED]]
#include <fcitx-config/rawconfig.h>
#include <fcitx-utils/log.h>
#include <fcitx/addoninstance.h>
#include <fcitx/addonmanager.h>
#include <fcitx/candidatelist.h>
#include <stdlib.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

#include "fuzz/choice.h"
#include "picker/brackets.h"
#include "picker/text.h"
#include "tests/fcitx/host.h"

namespace {

using namespace kigou;
namespace fs = std::filesystem;
using fcitx::CapabilityFlag;
using fcitx::CapabilityFlags;

const std::string trigger = "Control+Alt+comma";

const char *const keys[] = {
    "Return", "Shift+Return", "KP_Enter", "space",     "Down",      "Up",        "Page_Down", "Page_Up", "Home", "End",
    "Right",  "Right",        "Left",     "BackSpace", "Tab",       "Shift+Tab", "Escape",    "1",       "2",    "9",
    "0",      "Alt+1",        "Alt+0",    "Control+d", "Control+c", "Super+a",   "F5",        "Shift_L", "→"};

/** What is pressed at one go. */
const char *const words[] = {"Escape h o s h i", "y a j i 1",   "k a k k o Shift+Return", "か っ こ",
                             "z q Escape",       "u + 2 6 0 6", "k : 1 - 8 9 Right",      "BackSpace BackSpace BackSpace"};

const CapabilityFlags fields[] = {CapabilityFlags(),
                                  {CapabilityFlag::Preedit, CapabilityFlag::FormattedPreedit},
                                  {CapabilityFlag::Preedit, CapabilityFlag::SurroundingText},
                                  {CapabilityFlag::Preedit, CapabilityFlag::Sensitive},
                                  {CapabilityFlag::Preedit, CapabilityFlag::Password}};

const char *const settings[][2] = {{"PageSize", "1"},      {"PageSize", "9"},          {"RecentPicks", "0"},
                                   {"RecentPicks", "100"}, {"HiddenFiles/0", "a.kig"}, {"ShowCodes", "False"}};

class Walk {
  public:
    Walk(fs::path folder, fs::path standard, std::uint64_t seed)
        : folder_(std::move(folder)), standard_(std::move(standard)), choice_(seed, 0) {
        fcitx::Log::setLogStream(log_);
    }

    void begin(fcitx::Instance &instance) {
        instance_ = &instance;
        check(instance.addonManager().addon("kigou") != nullptr, "there is no module");
        log_.str({}); // it misses the engine
        restore();
    }

    void step() {
        did_.clear();
        look(); // what was done beside may have been drawn meanwhile
        const std::size_t kind = choice_.below(40);
        if (!open_ && kind < 20) {
            press(trigger);
        } else if (kind < 30) {
            std::istringstream all(choice_.one_in(4) ? choice_.of(words) : choice_.of(keys));
            for (std::string key; all >> key;) press(key);
        } else if (kind < 34) {
            click();
        } else {
            happen();
        }
    }

    /** Whatever there was, it still answers; then it is closed. */
    void answer() {
        restore();
        press(trigger);
        for (int i = 0; i < 4; ++i) press("Left"); // where it was left there may be nothing
        check(!shown().empty(), "it shows nothing any more");
        press("Escape");
        if (open_) press("Escape");
        check(!open_, "it does not close any more");
    }

    /** While it is open, and has work to do on the disk. */
    void end() {
        if (field_) {
            field_->press(trigger);
            field_->press("→");
            field_->press("Control+d");
        }
        field_.reset();
    }

    /** The last of what was done, and what it came to. */
    std::string told() const {
        std::string text = field_ ? field_->inputPanel().auxUp().toString() + "\n" : "";
        for (const std::string &one : done_) text += "  " + one + "\n";
        return text + log_.str();
    }

  private:
    void check(bool holds, const std::string &otherwise) const {
        if (!holds) throw std::runtime_error(did_ + ": " + otherwise);
    }

    void doing(const std::string &what) {
        did_ = what;
        done_.push_back(what);
        if (done_.size() > 40) done_.pop_front();
    }

    /** A field and a standard set as they should be, nothing open. */
    void restore() {
        doing("restore");
        fs::copy_file(standard_, folder_ / "program/default.kig", fs::copy_options::overwrite_existing);
        new_field();
        open_ = false;
        look();
    }

    void new_field() {
        field_.reset();
        field_ = std::make_unique<Field>(instance_->inputContextManager());
    }

    /** What holds at any time. */
    void look() {
        check(field_->committed.empty(), "it commits " + field_->committed);
        check(open_ == !field_->inputPanel().empty(), open_ ? "nothing is shown" : "something is shown although it is closed");
        const std::string log = log_.str();
        check(!log.starts_with('E') && log.find("\nE") == std::string::npos, "an error is logged");
        log_.str({});
    }

    /** The symbols of the candidates, and the titles that might be one. */
    std::set<std::string> shown() const {
        std::set<std::string> all;
        const auto list = field_->inputPanel().candidateList();
        for (int i = 0; list && i < list->size(); ++i) {
            const std::string text = list->candidate(i).text().toString();
            all.insert(text.substr(0, text.find("  ")));
        }
        return all;
    }

    /** Whether a text is one of the symbols, or with its partner. */
    static bool is_of(const std::string &text, const std::set<std::string> &symbols) {
        const std::u32string characters = to_characters(text);
        if (characters.size() == 1) {
            const auto sjis = sjis_of(characters[0]);
            return sjis && sjis->size() == 2 && symbols.contains(text);
        }
        for (const std::string &symbol : symbols) {
            const auto one = to_characters(symbol).size() == 1 ? sjis_of(to_characters(symbol)[0]) : std::nullopt;
            const auto pair = one ? bracket_pair(*one) : std::nullopt;
            if (pair && text == to_utf8(pair->first) + to_utf8(pair->second)) return true;
        }
        return false;
    }

    /** Something is done while it is open that may take one of what is shown, or close it. */
    void use(const std::function<void()> &work, bool may_close) {
        const std::set<std::string> before = shown();
        work();
        const std::string text = std::exchange(field_->committed, {});
        check(text.empty() || is_of(text, before), "it commits " + text + ", which was not shown");
        open_ = !field_->inputPanel().empty();
        check(open_ || may_close || !text.empty(), "it closes");
        look();
    }

    void press(const std::string &key) {
        doing("press " + key);
        if (open_) {
            const bool of_others = key == "Control+c" || key == "Super+a";
            const bool closes = key == trigger || of_others, to_program = of_others || key == "Shift_L";
            use([&] { check(field_->press(key) != to_program, "it goes to the wrong one"); }, closes || key == "Escape");
            check(!open_ || !closes, "it stays open");
            return;
        }
        const bool opens = key == trigger && !field_->capabilityFlags().test(CapabilityFlag::Password);
        check(field_->press(key) == opens, "it goes to the wrong one");
        open_ = opens;
        look();
    }

    /** A click in the window, which keeps no list alive for it. */
    void click() {
        fcitx::CandidateList *const list = field_->inputPanel().candidateList().get();
        if (!open_ || !list || list->size() == 0) return;
        const auto number = static_cast<int>(choice_.below(static_cast<std::size_t>(list->size())));
        const std::function<void()> clicks[] = {
            [&] { list->toPageable()->prev(); }, [&] { list->toPageable()->next(); }, [&] { list->toCursorMovable()->prevCandidate(); },
            [&] { list->toCursorMovable()->nextCandidate(); }, [&] { list->candidate(number).select(field_.get()); }};
        const std::size_t what = choice_.below(std::size(clicks));
        doing("click " + std::to_string(what) + " " + std::to_string(number));
        use(clicks[what], false);
    }

    /** What else there is between two keys. */
    void happen() {
        const CapabilityFlags &flags = choice_.of(fields);
        const auto &setting = choice_.of(settings);
        const auto place = [&] { return static_cast<unsigned>(choice_.below(4)); };
        struct Event {
            std::string name;
            std::function<void()> work;
            bool closes = true;
        };
        const Event events[] = {
            {"the focus goes", [&] { field_->focusOut(); }},
            {"reset", [&] { field_->reset(); }},
            {"another field while it is open", [&] { new_field(); }},
            {"the field becomes another", [&] { field_->setCapabilityFlags(flags); }, flags.test(CapabilityFlag::Password)},
            {"settings are read again", [&] { instance_->reloadAddonConfig("kigou"); }},
            {std::string("setting ") + setting[0] + " " + setting[1],
             [&] {
                 fcitx::RawConfig config;
                 config.setValueByPath(setting[0], setting[1]);
                 instance_->addonManager().addon("kigou")->setConfig(config);
             }},
            {"something is selected",
             [&] {
                 field_->surroundingText().setText("a→（", place(), place());
                 field_->updateSurroundingText();
             },
             false},
            {"files change", [&] { change_files(); }, false},
            {"files change", [&] { change_files(); }, false},
        };
        const Event &event = choice_.of(events);
        doing(event.name);
        event.work();
        if (event.closes) open_ = false;
        look();
        field_->focusIn();
    }

    void change_files() {
        const fs::path own = folder_ / "common" / (choice_.one_in(2) ? "a.kig" : "b.kig");
        switch (choice_.below(4)) {
            case 0:
                fs::remove(own);
                break;
            case 1:
                std::ofstream(own) << "spoilt";
                break;
            case 2:
                fs::remove(folder_ / "program/default.kig");
                break;
            default:
                fs::copy_file(standard_, own, fs::copy_options::overwrite_existing);
        }
    }

    fs::path folder_, standard_;
    Choice choice_;
    fcitx::Instance *instance_ = nullptr;
    std::unique_ptr<Field> field_;
    bool open_ = false;
    std::string did_;
    std::deque<std::string> done_;
    std::ostringstream log_;
};

} // namespace

int main(int count, char **arguments) {
    const std::string prefix = count > 1 ? arguments[1] : "";
    const int steps = count > 2 ? std::stoi(arguments[2]) : 4000;
    std::string folder = (fs::temp_directory_path() / "kigou-walk-XXXXXX").string();
    if (prefix.empty() || !mkdtemp(folder.data())) return 2;
    int status = 0;
    {
        Walk walk(folder, fs::path(prefix) / "share/kigou/default.kig", count > 3 ? std::stoull(arguments[3]) : 1);
        Fcitx fcitx(prefix, folder);
        int step = 0;
        try {
            fcitx.run([&](fcitx::Instance &instance) { walk.begin(instance); });
            for (; step < steps; ++step) {
                fcitx.run([&](fcitx::Instance &) { walk.step(); });
                if (step % 100 == 99) fcitx.run([&](fcitx::Instance &) { walk.answer(); });
            }
        } catch (const std::exception &broken) {
            std::cout << "step " << step << ", " << broken.what() << "\n" << walk.told();
            status = 1;
        }
        fcitx.run([&](fcitx::Instance &) { walk.end(); });
    }
    if (status == 0) fs::remove_all(folder);
    return status;
}
