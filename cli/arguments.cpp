// arguments.cpp - see arguments.h.
#include "cli/arguments.h"

#include <CLI/CLI.hpp>

namespace kigou {

void Arguments::word(const char *name, std::string &value, const std::string &help) {
    app_.add_option(name, value, help)->required()->type_name("");
}

void Arguments::optional_word(const char *name, std::string &value, const std::string &help) {
    CLI::Option *const option = app_.add_option(name, value, help)->type_name("");
    if (!value.empty()) option->capture_default_str();
}

void Arguments::words(const char *name, std::vector<std::string> &values, const std::string &help,
                      int least) {
    CLI::Option *const option = app_.add_option(name, values, help)->type_name("");
    if (least > 0) option->required()->expected(least, CLI::detail::expected_max_vector_size);
}

void Arguments::option(const char *name, std::optional<std::string> &value,
                       const std::string &help) {
    app_.add_option(name, value, help);
}

void Arguments::choice(const char *name, std::string &value,
                       const std::vector<std::string> &choices, const std::string &help) {
    app_.add_option(name, value, help)->check(CLI::IsMember(choices));
}

void Arguments::flag(const char *name, bool &value, const std::string &help) {
    app_.add_flag(name, value, help);
}

void Arguments::exclude(const char *name, const char *other) {
    app_.get_option(name)->excludes(app_.get_option(other));
}

} // namespace kigou
