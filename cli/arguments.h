// arguments.h - what a command takes, told to the parser and kept for who shows or completes
// it. It keeps the parser's header, which takes a compiler long, out of the commands.
#ifndef KIGOU_ARGUMENTS_H
#define KIGOU_ARGUMENTS_H

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace kigou {

/** What a word or the value of an option is. */
enum class Value {
    none,       /**< a flag has none */
    path,       /**< of a title, with or without the title of its file */
    file_title, /**< of a set that is there */
    new_title,  /**< of a set or a title that is to be */
    file,       /**< on disk */
    folder,     /**< on disk */
    symbols,    /**< characters or codes */
    format,     /**< of a line about a symbol */
    choice,     /**< one of the choices */
    text        /**< anything else */
};

/** A word or an option, as it was declared. */
struct Argument {
    std::vector<std::string> names; /**< "-f", "--format"; of a word what the help calls it */
    Value value = Value::none;
    std::string help;
    std::vector<std::string> choices{};
    std::string variable{};                  /**< of the environment, which sets it too */
    bool required = false, repeated = false; /**< of a word */

    bool is_word() const { return !names.front().starts_with('-'); }

    /** What the help calls the value: "TITLE", "text|json|tsv"; nothing for a flag. */
    std::string value_name() const;
};

/** Each call adds one; the variable must live until the command has run. */
class Arguments {
  public:
    explicit Arguments(CLI::App &app) : app_(app) {}

    /** A word that must be given. */
    void word(const char *name, Value kind, std::string &value, const std::string &help);

    /** A word that need not be given. */
    void optional_word(const char *name, Value kind, std::string &value, const std::string &help);

    /** Words, so many at least. */
    void words(const char *name, Value kind, std::vector<std::string> &values,
               const std::string &help, int least = 1);

    /** @param names  "--file", or "-f,--format" */
    void option(const char *names, Value kind, std::optional<std::string> &value,
                const std::string &help);

    /** One of the choices, in either case; the value is as it is among them. */
    void choice(const char *names, std::string &value, const std::vector<std::string> &choices,
                const std::string &help);
    void flag(const char *name, bool &value, const std::string &help);

    /** A folder that has a value already, which the environment may change. */
    void folder(const char *name, const char *variable, std::string &value,
                const std::string &help);

    /** The two may not be given together. */
    void exclude(const char *name, const char *other);

    /** All that were added, in that order. */
    const std::vector<Argument> &all() const { return all_; }

  private:
    void keep(CLI::Option &option, Argument argument);

    CLI::App &app_;
    std::vector<Argument> all_;
};

} // namespace kigou

#endif
