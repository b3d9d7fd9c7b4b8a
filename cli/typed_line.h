// typed_line.h - the words of a command line taken apart without a judgement, also while they
// are still being typed.
#ifndef KIGOU_TYPED_LINE_H
#define KIGOU_TYPED_LINE_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/arguments.h"
#include "cli/command.h"

namespace kigou {

/** A command with what it takes, or the options of all commands. */
struct Declared {
    const Command *command = nullptr; /**< null for those of all */
    std::vector<Argument> arguments;

    const Argument *option(std::string_view name) const; /**< null when it has none such */
};

/** A name that may be meant by a verb. */
struct MeantVerb {
    std::string name; /**< or the second name */
    const Declared *declared = nullptr;
};

/** A full name stands for itself alone, the beginning of names for all of them. */
std::vector<MeantVerb> meant_by(std::string_view verb, std::span<const Declared> declared);

/** The command that an option stands for without its name; null when it stands for none. */
const Declared *meant_by_option(std::string_view name, std::span<const Declared> declared);

class TypedLine {
  public:
    /**
     * @param words     those behind the name of the program
     * @param declared  the options of all commands first, then the commands; must live as long
     */
    TypedLine(std::span<const std::string> words, std::span<const Declared> declared);

    std::optional<std::size_t> verb;   /**< which of the words it is; an option may stand for it */
    const Declared *command = nullptr; /**< null while the verb is none, or may be several */
    std::vector<std::string> words;    /**< behind the verb, without options */
    std::vector<std::pair<const Argument *, std::string>> options; /**< those with a value */
    const Argument *awaited = nullptr; /**< the option that the last word is, without its value */
    bool options_ended = false;        /**< by -- */

    /**
     * An option of the command or of all, and before there is a command of the one that an
     * option may still stand for; null when there is none such.
     */
    const Argument *option(std::string_view name) const;

  private:
    void take(const std::string &word);

    std::span<const Declared> declared_;
};

} // namespace kigou

#endif
