// arguments.cpp - see arguments.h.
#include "cli/arguments.h"

#include <CLI/CLI.hpp>

namespace kigou {

std::string Argument::value_name() const {
    switch (value) {
        case Value::none:
            return {};
        case Value::path:
            return "PATH";
        case Value::file_title:
        case Value::new_title:
            return "TITLE";
        case Value::file:
            return "FILE";
        case Value::folder:
            return "DIRECTORY";
        case Value::symbols:
            return "SYMBOL";
        case Value::format:
            return "FORMAT";
        case Value::choice:
            return CLI::detail::join(choices, "|");
        case Value::text:
            break;
    }
    return "TEXT";
}

void Arguments::keep(CLI::Option &option, Argument argument) {
    option.type_name(argument.is_word() ? "" : argument.value_name());
    all_.push_back(std::move(argument));
}

void Arguments::word(const char *name, Value kind, std::string &value, const std::string &help) {
    keep(*app_.add_option(name, value, help)->required(),
         {.names = {name}, .value = kind, .help = help, .required = true});
}

void Arguments::optional_word(const char *name, Value kind, std::string &value,
                              const std::string &help) {
    CLI::Option *const option = app_.add_option(name, value, help);
    if (!value.empty()) option->capture_default_str();
    keep(*option, {.names = {name}, .value = kind, .help = help});
}

void Arguments::words(const char *name, Value kind, std::vector<std::string> &values,
                      const std::string &help, int least) {
    // From 2.3 on the parser takes no name with a blank; one that does not break lines is none.
    const std::string one_word = CLI::detail::find_and_replace(name, " ", "\u00A0");
    CLI::Option *const option = app_.add_option(one_word, values, help);
    if (least > 0) option->required()->expected(least, CLI::detail::expected_max_vector_size);
    keep(*option,
         {.names = {name}, .value = kind, .help = help, .required = least > 0, .repeated = true});
}

void Arguments::option(const char *names, Value kind, std::optional<std::string> &value,
                       const std::string &help) {
    keep(*app_.add_option(names, value, help),
         {.names = CLI::detail::split(names, ','), .value = kind, .help = help});
}

void Arguments::choice(const char *names, std::string &value,
                       const std::vector<std::string> &choices, const std::string &help) {
    keep(*app_.add_option(names, value, help)
              ->transform(CLI::IsMember(choices, CLI::ignore_case).description("")),
         {.names = CLI::detail::split(names, ','),
          .value = Value::choice,
          .help = help,
          .choices = choices});
}

void Arguments::flag(const char *name, bool &value, const std::string &help) {
    keep(*app_.add_flag(name, value, help), {.names = {name}, .help = help});
}

void Arguments::folder(const char *name, const char *variable, std::string &value,
                       const std::string &help) {
    keep(*app_.add_option(name, value, help)->envname(variable)->capture_default_str(),
         {.names = {name}, .value = Value::folder, .help = help, .variable = variable});
}

void Arguments::exclude(const char *name, const char *other) {
    app_.get_option(name)->excludes(app_.get_option(other));
}

} // namespace kigou
