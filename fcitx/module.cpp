// module.cpp - see module.h.
#include "fcitx/module.h"

#include <fcitx-config/iniparser.h>
#include <fcitx-utils/i18n.h>
#include <fcitx-utils/log.h>
#include <fcitx/addonfactory.h>
#include <fcitx/addonmanager.h>
#include <fcitx/inputmethodengine.h>
#include <fcitx/inputpanel.h>

#include <exception>
#include <utility>

#include "fcitx/composition.h"
#include "fcitx/folders.h"
#include "fcitx/panel.h"
#include "picker/brackets.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

FCITX_DEFINE_LOG_CATEGORY(log_category, "kigou");

constexpr const char *config_file = "conf/kigou.conf";

std::string selected_in(const fcitx::InputContext &field) {
    const fcitx::SurroundingText &text = field.surroundingText();
    return text.isValid() ? text.selectedText() : std::string();
}

bool is_symbol(const std::string &text) {
    const std::u32string characters = to_characters(text);
    if (characters.size() != 1) return false;
    const auto sjis = sjis_of(characters.front());
    return sjis && sjis->size() == 2;
}

/** Keys with these, but for the module's own, are of fcitx5 or the program. */
const fcitx::KeyStates of_others{fcitx::KeyState::Ctrl, fcitx::KeyState::Alt,
                                 fcitx::KeyState::Super, fcitx::KeyState::Hyper};

const fcitx::CapabilityFlags closed_to{fcitx::CapabilityFlag::Password,
                                       fcitx::CapabilityFlag::Disable};

} // namespace

Module::Module(fcitx::Instance *instance) : instance_(instance) {
    using fcitx::EventType;
    dispatcher_.attach(&instance->eventLoop());
    Module::reloadConfig();
    watch(EventType::InputContextKeyEvent,
          [this](fcitx::Event &event) { take_key(static_cast<fcitx::KeyEvent &>(event)); });
    const auto close_there = [this](fcitx::Event &event) {
        if (is_open_in(static_cast<fcitx::InputContextEvent &>(event).inputContext())) close();
    };
    for (const EventType type : {EventType::InputContextFocusOut, EventType::InputContextReset,
                                 EventType::InputContextSwitchInputMethod}) {
        watch(type, close_there);
    }
    watch(EventType::InputContextCapabilityChanged, [this](fcitx::Event &event) {
        const auto *const field = static_cast<fcitx::InputContextEvent &>(event).inputContext();
        if (is_open_in(field) && field->capabilityFlags().testAny(closed_to)) close();
    });
}

Module::~Module() {
    guarded([this] { close(); });
}

void Module::reloadConfig() {
    guarded([this] {
        fcitx::readAsIni(config_, config_file);
        use_config();
    });
}

void Module::setConfig(const fcitx::RawConfig &raw) {
    guarded([&] {
        config_.load(raw, true);
        fcitx::safeSaveAsIni(config_, config_file);
        use_config();
    });
}

void Module::use_config() {
    close();
    opening_.use({.page_size = static_cast<std::size_t>(*config_.page_size),
                  .recent_picks = static_cast<std::size_t>(*config_.recent_picks),
                  .hidden = *config_.hidden});
}

void Module::watch(fcitx::EventType type, std::function<void(fcitx::Event &)> handler) {
    watched_.push_back(
        instance_->watchEvent(type, fcitx::EventWatcherPhase::PreInputMethod,
                              [this, handler = std::move(handler)](fcitx::Event &event) {
                                  guarded([&] { handler(event); });
                              }));
}

/** Nothing that goes wrong here may end the input method: it is logged, and the symbols close. */
void Module::guarded(const std::function<void()> &work) noexcept {
    try {
        try {
            return work();
        } catch (const std::exception &error) {
            FCITX_LOGC(log_category, Error) << "kigou: " << error.what();
        }
        close();
    } catch (...) {
        FCITX_LOGC(log_category, Error) << "kigou: the symbols could not be closed";
    }
}

bool Module::is_open_in(const fcitx::InputContext *field) const {
    return opening_.is_open() && field_.get() == field;
}

void Module::take_key(fcitx::KeyEvent &event) {
    fcitx::InputContext *const field = event.inputContext();
    const fcitx::Key key = event.key();
    const bool open_here = is_open_in(field);
    if (!event.isRelease() && key.checkKeyList(*config_.trigger)) {
        if (!open_here && field->capabilityFlags().testAny(closed_to)) return;
        event.filterAndAccept();
        return open_here ? close() : open(*field);
    }
    if (!open_here) return;
    const bool is_press = !event.isRelease() && !key.isModifier();
    const auto command = is_press ? command_of(key, opening_.view()) : std::nullopt;
    if (is_press && !command && key.states().testAny(of_others)) return close(); // it is of others
    event.filter(); // no engine gets it
    if (is_press) event.accept();
    if (command) act(*command);
}

void Module::open(fcitx::InputContext &field) {
    close();
    commit_composition(field);
    opening_.open();
    field_ = field.watch();
    if (const View view = opening_.view(); !view.message.empty()) {
        FCITX_LOGC(log_category, Warn) << "kigou: " << view.message;
    }
    const std::string selection = selected_in(field);
    selected_ = !selection.empty();
    looks_for_selected_ = is_symbol(selection);
    if (looks_for_selected_) opening_.act({Act::type, selection});
    draw();
}

/** As when the focus goes: the engine forgets its composition, and what was shown is committed. */
void Module::commit_composition(fcitx::InputContext &field) {
    const fcitx::InputMethodEntry *const entry = instance_->inputMethodEntry(&field);
    const std::string composed = composed_text(field, entry ? entry->addon() : std::string());
    if (auto *const engine = instance_->inputMethodEngine(&field); engine && entry) {
        fcitx::FocusOutEvent event(&field);
        engine->reset(*entry, event);
    }
    if (!composed.empty()) field.commitString(composed);
}

void Module::close() {
    if (!opening_.is_open()) return;
    opening_.close();
    if (fcitx::InputContext *const field = field_.get()) hide_panel(*field);
    field_.unwatch();
}

void Module::act(const Command &command) {
    const bool anew = std::exchange(looks_for_selected_, false) && command.action.act == Act::type;
    if (command.favourite) return toggle_favourite();
    if (anew) opening_.act({Act::back}); // what is typed takes the place of what was selected
    take(opening_.act(command.action), command.with_partner);
    if (opening_.is_over()) return close();
    draw();
}

void Module::toggle_favourite() {
    opening_.toggle_favourite([this](const std::string &told, bool failed) {
        dispatcher_.schedule([this, told, failed] {
            guarded([&] {
                if (failed) FCITX_LOGC(log_category, Error) << "kigou: " << told;
                opening_.show(told, failed);
                if (opening_.is_open()) draw();
            });
        });
    });
    draw();
}

void Module::draw() {
    fcitx::InputContext *const field = field_.get();
    if (!field) return close();
    show_panel(*field, opening_, {*config_.codes, selected_}, [this](const Action &action) {
        guarded([&] {
            if (opening_.is_open()) act({action});
        });
    });
}

void Module::take(const std::vector<Sjis> &symbols, bool with_partner) {
    fcitx::InputContext *const field = field_.get();
    if (!field || symbols.empty()) return;
    std::vector<Sjis> taken;
    for (const Sjis &symbol : symbols) {
        const auto pair = with_partner ? bracket_pair(symbol) : std::nullopt;
        const std::string text =
            pair ? to_utf8(pair->first) + to_utf8(pair->second) : to_utf8(symbol);
        if (text != printable(text)) continue; // a file may hold two control characters as a symbol
        field->commitString(text);
        taken.push_back(symbol);
    }
    if (!taken.empty() &&
        !field->capabilityFlags().testAny(fcitx::CapabilityFlag::PasswordOrSensitive)) {
        opening_.note(taken);
    }
}

namespace {

class Factory : public fcitx::AddonFactory {
    fcitx::AddonInstance *create(fcitx::AddonManager *manager) override {
        // The texts of the configuration are translated when it is made.
        fcitx::registerDomain(FCITX_GETTEXT_DOMAIN, installed("locale").c_str());
        translate_sentences([](const char *text) { return _(text); });
        return new Module(manager->instance());
    }
};

} // namespace
} // namespace kigou

FCITX_ADDON_FACTORY(kigou::Factory)
