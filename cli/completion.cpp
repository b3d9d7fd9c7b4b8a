// completion.cpp - see completion.h.
#include "cli/completion.h"

#include <algorithm>
#include <exception>
#include <iostream>

#include "cli/command_line.h"
#include "cli/output.h"
#include "cli/typed_line.h"
#include "picker/editing.h"
#include "picker/path_completion.h"
#include "picker/set_files.h"

namespace kigou {
namespace {

/** More than anybody reads; a shell takes long with many. */
constexpr std::size_t most_candidates = 1000;

class Completer {
  public:
    explicit Completer(std::span<const std::string> words)
        : typed_(words.back()), line_(words.first(words.size() - 1), command_line_.declared()) {}

    Completion complete() {
        const auto equals = typed_.find('=');
        const bool option = !line_.options_ended && typed_.starts_with('-');
        if (line_.awaited) {
            add_values(*line_.awaited, typed_, "");
        } else if (option && typed_.starts_with("--") && equals != std::string::npos) {
            const Argument *const named = line_.option(typed_.substr(0, equals));
            if (named) add_values(*named, typed_.substr(equals + 1), typed_.substr(0, equals + 1));
        } else if (option) {
            add_options();
        } else if (line_.command) {
            const Argument *const word = awaited_word();
            if (word) add_values(*word, typed_, "");
        } else if (!line_.verb) {
            add_verbs();
        }
        return std::move(completion_);
    }

  private:
    void add(std::string word, const std::string &description) {
        completion_.candidates.push_back({std::move(word), description});
    }

    void add_verbs() {
        for (const MeantVerb &verb : meant_by(typed_, command_line_.declared())) {
            add(verb.name, verb.declared->command->summary);
        }
    }

    void add_options() {
        const std::vector<Declared> &all = command_line_.declared();
        if (line_.command) add_options_of(*line_.command, false);
        add_options_of(all.front(), false);
        if (line_.command || line_.verb) return;
        for (const Declared &one : all) add_options_of(one, true);
    }

    /** @param by_options  those alone that stand for the command as well */
    void add_options_of(const Declared &declared, bool by_options) {
        for (const Argument &argument : declared.arguments) {
            if (argument.is_word()) continue;
            for (const std::string &name : argument.names) {
                if (!name.starts_with(typed_)) continue;
                if (by_options && !meant_by_option(name, command_line_.declared())) continue;
                add(name, argument.help);
            }
        }
    }

    /** The argument that the word would be which is being typed. */
    const Argument *awaited_word() const {
        std::size_t before = line_.words.size();
        for (const Argument &argument : line_.command->arguments) {
            if (!argument.is_word()) continue;
            if (before == 0 || argument.repeated) return &argument;
            --before;
        }
        return nullptr;
    }

    void add_values(const Argument &argument, const std::string &value, const std::string &front) {
        switch (argument.value) {
            case Value::choice:
                for (const std::string &choice : argument.choices) {
                    if (choice.starts_with(value)) add(front + choice, "");
                }
                return;
            case Value::file_title:
                return add_file_titles(value, front);
            case Value::path:
                return add_paths(argument, value, front);
            case Value::file:
                completion_.files = true;
                return;
            case Value::folder:
                completion_.folders = true;
                return;
            default:
                return;
        }
    }

    /** Whether a word would be taken for an option. */
    bool is_like_option(const Argument &argument, const std::string &word) const {
        return argument.is_word() && !line_.options_ended && word.starts_with('-');
    }

    void add_file_titles(const std::string &value, const std::string &front) {
        const SetFiles sets = find_sets(directories());
        for (const SetFile &set : sets.sets) {
            const std::string &title = set.title.text;
            if (title.starts_with(value) && can_be_typed(title) &&
                sets.find(set.title.sjis) == &set) {
                add(front + title, printable(set.path));
            }
        }
    }

    void add_paths(const Argument &argument, const std::string &value, const std::string &front) {
        std::optional<std::string> file;
        for (const auto &[option, given] : line_.options) {
            if (option->value == Value::file_title && argument.is_word()) file = given;
        }
        for (const PathCompletion &one : path_completions(find_sets(directories()), value, file)) {
            if (is_like_option(argument, one.path)) continue;
            add(front + one.path, one.symbols == 0 ? "" : counted(one.symbols, "symbol"));
        }
    }

    /** As the words and the environment say. */
    Directories directories() {
        std::vector<std::string> words;
        for (const auto &[option, value] : line_.options) {
            if (option->value == Value::folder) {
                words.insert(words.end(), {option->names.front(), value});
            }
        }
        words.emplace_back("files");
        return command_line_.parse(words).value().context.directories;
    }

    CommandLine command_line_;
    std::string typed_;
    TypedLine line_;
    Completion completion_;
};

std::size_t common_bytes(const std::string &one, const std::string &other) {
    const std::size_t both = std::min(one.size(), other.size());
    return static_cast<std::size_t>(
        std::mismatch(one.begin(), one.begin() + static_cast<std::ptrdiff_t>(both), other.begin())
            .first -
        one.begin());
}

/** The first ones, and the one that has least in common with them: a shell types what all share. */
void shorten(std::vector<Candidate> &candidates) {
    if (candidates.size() <= most_candidates) return;
    const std::string first = candidates.front().word;
    const auto odd =
        std::min_element(candidates.begin() + most_candidates - 1, candidates.end(),
                         [&](const Candidate &one, const Candidate &other) {
                             return common_bytes(one.word, first) < common_bytes(other.word, first);
                         });
    std::iter_swap(candidates.begin() + most_candidates - 1, odd);
    candidates.resize(most_candidates);
}

} // namespace

Completion complete(std::span<const std::string> words) {
    Completion completion = Completer(words).complete();
    shorten(completion.candidates);
    return completion;
}

void write_completion(std::span<const std::string> words) {
    if (words.empty()) return;
    try {
        const Completion completion = complete(words);
        for (const Candidate &candidate : completion.candidates) {
            std::cout << candidate.word << '\t' << shortened(candidate.description) << '\n';
        }
        if (completion.files) std::cout << "\tfile\n";
        if (completion.folders) std::cout << "\tdirectory\n";
        std::cout.flush();
    } catch (const std::exception &) {
        // No candidates, and the line that is being typed stays as it is.
    }
}

} // namespace kigou
