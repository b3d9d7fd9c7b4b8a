// command_line.h - the command line as the table of commands makes it.
#ifndef KIGOU_COMMAND_LINE_H
#define KIGOU_COMMAND_LINE_H

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/typed_line.h"

namespace kigou {

/** All commands, in the order in which the help shows them. */
std::span<const Command *const> commands();

/** What was asked for. It stands on the command line that made it, which must live as long. */
struct Invocation {
    const Command *command = nullptr;
    Context context;
    Body body;
};

/** The options of kigou and of each command, told to the parser. Good for one line. */
class CommandLine {
  public:
    CommandLine();
    ~CommandLine();
    CommandLine(const CommandLine &) = delete;
    CommandLine &operator=(const CommandLine &) = delete;

    /**
     * Reads the words behind the name of the program. "help COMMAND" is "COMMAND --help".
     * @return nothing when they ask for help or the version, which is written then
     * @throws Failure (refused) for a word that is no command, may be several, is no option, or
     *         lacks its value
     */
    std::optional<Invocation> parse(std::vector<std::string> words);

    /** What may be said: of all commands first, then of each. */
    const std::vector<Declared> &declared() const { return declared_; }

  private:
    void declare_general();
    void declare(const Command &command);

    struct Parser;
    std::unique_ptr<Parser> parser_;
    std::vector<Declared> declared_;
    Invocation invocation_;
};

} // namespace kigou

#endif
