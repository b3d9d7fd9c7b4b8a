// typed_line.cpp - see typed_line.h.
#include "cli/typed_line.h"

#include <algorithm>

namespace kigou {

const Argument *Declared::option(std::string_view name) const {
    const auto found =
        std::find_if(arguments.begin(), arguments.end(), [&](const Argument &argument) {
            return !argument.is_word() && std::find(argument.names.begin(), argument.names.end(),
                                                    name) != argument.names.end();
        });
    return found == arguments.end() ? nullptr : &*found;
}

std::vector<MeantVerb> meant_by(std::string_view verb, std::span<const Declared> declared) {
    std::vector<MeantVerb> meant;
    for (const Declared &one : declared) {
        if (!one.command) continue;
        for (const char *name : {one.command->name, one.command->alias}) {
            if (!name) continue;
            if (name == verb) return {{name, &one}};
            if (std::string_view(name).starts_with(verb)) meant.push_back({name, &one});
        }
    }
    return meant;
}

const Declared *meant_by_option(std::string_view name, std::span<const Declared> declared) {
    const Declared *only = nullptr;
    for (const Declared &one : declared) {
        if (!one.option(name)) continue;
        if (!one.command || !one.command->by_options) return nullptr;
        only = &one;
    }
    return only;
}

TypedLine::TypedLine(std::span<const std::string> all, std::span<const Declared> declared)
    : declared_(declared) {
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (awaited) {
            options.emplace_back(std::exchange(awaited, nullptr), all[i]);
        } else if (!options_ended && all[i].size() > 1 && all[i].starts_with('-')) {
            take(all[i]);
        } else if (command || verb) {
            words.push_back(all[i]);
        } else {
            verb = i;
            const std::vector<MeantVerb> meant = meant_by(all[i], declared);
            if (meant.size() == 1) command = meant.front().declared;
        }
    }
}

void TypedLine::take(const std::string &word) {
    if (word == "--") {
        options_ended = true;
        return;
    }
    const bool whole_name = word.starts_with("--");
    const std::size_t end = whole_name ? word.find('=') : std::min<std::size_t>(word.size(), 2);
    const std::string name = word.substr(0, end);
    if (!command && !verb) command = meant_by_option(name, declared_);
    const Argument *const found = option(name);
    if (!found || found->value == Value::none) return;
    if (end >= word.size()) {
        awaited = found;
    } else {
        options.emplace_back(found, word.substr(end + (whole_name ? 1 : 0)));
    }
}

const Argument *TypedLine::option(std::string_view name) const {
    const Argument *found = command ? command->option(name) : nullptr;
    if (!found && !declared_.empty()) found = declared_.front().option(name);
    if (found || command || verb) return found;
    for (const Declared &one : declared_) {
        if (one.command && one.command->by_options) found = one.option(name);
    }
    return found;
}

} // namespace kigou
