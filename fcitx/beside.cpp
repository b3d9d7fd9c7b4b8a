// beside.cpp - see beside.h.
#include "fcitx/beside.h"

#include <chrono>
#include <utility>

namespace kigou {

void Beside::run(Work work) {
    last_ = std::async(std::launch::async,
                       [work = std::move(work), before = std::move(last_)]() mutable {
                           std::string trouble = before.valid() ? before.get() : std::string();
                           std::string now = work();
                           return now.empty() ? trouble : now;
                       });
}

std::optional<std::string> Beside::troubles() {
    constexpr std::chrono::seconds at_once{0};
    if (!last_.valid() || last_.wait_for(at_once) != std::future_status::ready) return {};
    return last_.get();
}

} // namespace kigou
