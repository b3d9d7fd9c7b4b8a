// help_texts.cpp - see help_texts.h.
#include "cli/help_texts.h"

#include <algorithm>
#include <array>

#include "cli/output.h"

namespace kigou {
namespace {

constexpr std::array examples{
    Example{"kigou find やじるし", "symbols by reading, name, title or code"},
    Example{"kigou tree", "the titles of the standard set"},
    Example{"kigou list 一般記号/矢印 --codes", "its arrows with their codes"},
    Example{"kigou show 〒", "where a symbol stands"},
    Example{"kigou new 私の記号", "a symbol file of your own"},
    Example{"kigou add 私の記号 郵便", "a title in it"},
    Example{"kigou put 私の記号/郵便 〒", "a symbol in the title"},
};

constexpr std::array topic_table{
    Topic{
        "COMMANDS IN SHORT",
        "The beginning of a command stands for it as long as no other command begins so: kigou li "
        "is kigou list, kigou re may be rename or recover and is refused. The whole name of a "
        "command always stands for itself. Options are written out. An option that browse alone has stands "
        "for the command too: kigou --pick.",
        Value::none},
    Topic{"PATHS",
          "A path is made of titles joined by ／; a typed / counts as one. The title of the symbol "
          "file may stand first. Without it the path is meant in the standard set, 標準の記号, or "
          "in the file that --file names. When there is no such title, kigou names those that come "
          "near, or what the title above holds.",
          Value::path},
    Topic{"SYMBOLS",
          "Each character of a word is one symbol. A symbol can also be given by its code, letters "
          "in either case: U+301C (Unicode), 1-33 (kuten), 0x8160 (Shift_JIS), j:2141 (JIS), "
          "e:A1C1 (EUC-JP). Characters outside of JIS X 0208, such as row 13, are marked as a "
          "vendor's.",
          Value::symbols},
    Topic{"SETS AND DIRECTORIES",
          "A set is a symbol file. It goes by the title in it, never by its name. Sets are looked "
          "for in the program directory and then among your own; of two with the same title the "
          "first is used. The standard set cannot be changed: edits with --as keep the result as a "
          "set of your own.\n\n"
          "Other sets that come with the program are copied among your own once, and the command "
          "that does so says it. Before put, rm and delete take something away, the file as it was "
          "is kept in the folder backup beside it.",
          Value::none},
    Topic{"JSON",
          "With --json each command writes one object, in UTF-8. null stands for what does not "
          "exist. Keys may be added later, but none is taken away. A command that fails writes an "
          "object with the key error, which has kind, text and hints.",
          Value::none},
};

constexpr std::array variable_table{
    Named{"XDG_DATA_HOME",
          "Your own sets lie in kigou below it; ~/.local/share when it is not set."},
    Named{"XDG_STATE_HOME",
          "What was copied already is noted in kigou below it; ~/.local/state when "
          "it is not set."},
    Named{"TMPDIR", "Where an edit has its working file, in place of /tmp."},
};

constexpr std::array file_table{
    Named{
        "share/kigou/default.kig",
        "The standard set, beside the folder bin of the program; in sets beside it are those that "
        "are copied."},
    Named{"~/.local/share/kigou/*.kig", "Your own sets, in EUC-JP."},
    Named{"~/.local/share/kigou/backup", "Sets as they were before something was taken away."},
    Named{"~/.local/state/kigou/shipped-sets",
          "The sets that were copied. Take a line out to get that set once more."},
};

} // namespace

const char *const program_summary = "Show and edit the symbol files of the symbol accessory";

const char *const exit_statuses =
    "0 found or done, 1 nothing found, 2 misuse or failure, "
    "3 an import or export left something out";

std::span<const Example> program_examples() {
    return examples;
}

std::string program_footer() {
    std::size_t width = 0;
    for (const Example &example : examples) width = std::max(width, display_width(example.command));
    std::string text = "Examples:\n";
    for (const Example &example : examples) {
        text += "  " + padded(example.command, width + 2) + example.meaning + "\n";
    }
    return text + "Exit status: " + exit_statuses + ".";
}

std::span<const Topic> topics() {
    return topic_table;
}

std::span<const Named> variables() {
    return variable_table;
}

std::span<const Named> files() {
    return file_table;
}

} // namespace kigou
