// host.cpp - see host.h.
#include "tests/fcitx/host.h"

#include <fcitx/addonmanager.h>
#include <fcitx/inputcontextmanager.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <stdexcept>
#include <utility>

namespace kigou {
namespace {

namespace fs = std::filesystem;

fs::path folder_of_module(const std::string &prefix) {
    for (const auto &entry : fs::recursive_directory_iterator(prefix)) {
        if (entry.path().filename() == "libkigou.so") return entry.path().parent_path();
    }
    throw std::runtime_error("no libkigou.so below " + prefix);
}

void set_environment(const std::string &prefix, const fs::path &folder) {
    const auto set = [](const char *name, const std::string &value) { setenv(name, value.c_str(), 1); };
    for (const char *const name : {"DISPLAY", "WAYLAND_DISPLAY", "LANGUAGE", "KIGOU_USER_DIR"}) {
        unsetenv(name);
    }
    set("LC_ALL", "C.UTF-8");
    set("HOME", folder);
    const std::pair<const char *, const char *> folders[] = {
        {"XDG_CONFIG_HOME", "config"}, {"XDG_CACHE_HOME", "cache"}, {"XDG_RUNTIME_DIR", "run"},     {"XDG_DATA_HOME", "data"},
        {"XDG_STATE_HOME", "state"},   {"TMPDIR", "tmp"},           {"KIGOU_COMMON_DIR", "common"}, {"KIGOU_PROGRAM_DIR", "program"}};
    for (const auto &[name, below] : folders) {
        fs::create_directories(folder / below);
        set(name, folder / below);
    }
    // It writes the name of the engine over the upper line when it likes.
    fs::create_directories(folder / "config/fcitx5");
    std::ofstream(folder / "config/fcitx5/config") << "[Behavior]\nShowInputMethodInformation=False\n";
    set("XDG_DATA_DIRS", prefix + "/share:/usr/share");
    set("FCITX_ADDON_DIRS", folder_of_module(prefix));
}

} // namespace

Field::Field(fcitx::InputContextManager &manager) : InputContext(manager, "host") {
    created();
    setCapabilityFlags({fcitx::CapabilityFlag::Preedit, fcitx::CapabilityFlag::FormattedPreedit});
    focusIn();
}

bool Field::press(const std::string &key) {
    fcitx::KeyEvent event(this, fcitx::Key(key));
    return keyEvent(event);
}

Fcitx::Fcitx(const std::string &prefix, const std::string &folder) {
    set_environment(fs::absolute(prefix), fs::absolute(folder));
    std::promise<void> attached; // what is scheduled before is lost
    thread_ = std::thread([&] { live(attached); });
    attached.get_future().get();
}

Fcitx::~Fcitx() {
    dispatcher_.schedule([this] { instance_->exit(); });
    thread_.join();
}

void Fcitx::live(std::promise<void> &attached) {
    char name[] = "fcitx5", none[] = "--disable=all", ours[] = "--enable=kigou";
    char *arguments[] = {name, none, ours, nullptr};
    fcitx::Instance instance(3, arguments);
    instance.addonManager().registerDefaultLoader(nullptr);
    instance_ = &instance;
    dispatcher_.attach(&instance.eventLoop());
    attached.set_value();
    instance.exec();
    dispatcher_.detach();
}

void Fcitx::run(const std::function<void(fcitx::Instance &)> &work) {
    const auto task = std::make_shared<std::packaged_task<void()>>([&] { work(*instance_); });
    std::future<void> done = task->get_future();
    dispatcher_.schedule([task] { (*task)(); });
    done.get();
}

} // namespace kigou
