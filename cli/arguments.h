// arguments.h - what a command takes, told to the parser. It keeps the parser's header, which
// takes a compiler long, out of the commands.
#ifndef KIGOU_ARGUMENTS_H
#define KIGOU_ARGUMENTS_H

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kigou {

/** Each call adds one; the variable must live until the command has run. */
class Arguments {
  public:
    explicit Arguments(CLI::App &app) : app_(app) {}

    /** A word that must be given. */
    void word(const char *name, std::string &value, const std::string &help);

    /** A word that need not be given. */
    void optional_word(const char *name, std::string &value, const std::string &help);

    /** Words, so many at least. */
    void words(const char *name, std::vector<std::string> &values, const std::string &help,
               int least = 1);

    void option(const char *name, std::optional<std::string> &value, const std::string &help);
    void choice(const char *name, std::string &value, const std::vector<std::string> &choices,
                const std::string &help);
    void flag(const char *name, bool &value, const std::string &help);

    /** The two may not be given together. */
    void exclude(const char *name, const char *other);

  private:
    CLI::App &app_;
};

} // namespace kigou

#endif
