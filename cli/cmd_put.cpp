// cmd_put.cpp - kigou put and kigou copy: symbols into a title.
#include <memory>

#include "cli/edit_command.h"
#include "cli/standard_input.h"
#include "picker/failure.h"
#include "picker/symbol_data.h"
#include "picker/symbol_reading.h"

namespace kigou {
namespace {

struct Options {
    std::string path;
    std::vector<std::string> words; /**< symbols; for copy the path stands last */
    EditOptions edit;
    std::string from = encoding_names().front();
    bool append = false, fold = false, empty = false;
};

Sjis symbols_of(const Options &options, std::size_t words) {
    TypedSymbols typed(options.fold ? Reading::folded : Reading::escaped);
    for (std::size_t i = 0; i < words; ++i) {
        typed.add_word(options.words[i], "argument " + std::to_string(i + 1));
    }
    if (!options.words.empty() || options.empty) return typed.finish();
    constexpr const char *awaited = "type the symbols";
    if (const Encoding from = encoding_named(options.from); from != Encoding::utf_8) {
        typed.add_text(decoded(whole_standard_input(awaited), from));
    } else {
        read_standard_input(awaited, [&](std::string_view piece) { typed.add_text(piece); });
    }
    return typed.finish();
}

Status run_put(const Context &context, const Options &options) {
    const Sjis typed = symbols_of(options, options.words.size());
    if (typed.empty() && !options.empty) {
        throw Failure(FailureKind::refused, "no symbols were given, so nothing is stored",
                      {"--empty takes all symbols out of a title"});
    }
    return tell(context, run_edit(context, options.edit, [&](Edit &edit) {
                    edit.locate(options.path);
                    edit.put(typed, options.append);
                }));
}

Status run_copy(const Context &context, const Options &options) {
    const Sjis typed = symbols_of(options, options.words.size() - 1);
    return tell(context, run_edit(context, options.edit, [&](Edit &edit) {
                    edit.locate(options.words.back());
                    edit.copy(symbols_in(typed));
                }));
}

Body declare_put(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("PATH", Value::path, options->path, "Title to store in");
    arguments.words(
        "SYMBOL", Value::symbols, options->words,
        "Characters, with blanks between or not, or codes (U+301C, 1-33, 0x8160); none: "
        "the lines of the standard input",
        0);
    arguments.flag("--append", options->append, "Keep the symbols that stand there");
    arguments.flag("--fold", options->fold,
                   "Take single-byte letters, digits, signs and half-width katakana for their "
                   "double-byte forms");
    declare_from(arguments, options->from);
    arguments.flag("--empty", options->empty, "Take all symbols out when none are given");
    declare_edit_options(arguments, options->edit);
    return [options](const Context &context) { return run_put(context, *options); };
}

Body declare_copy(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.words("SYMBOL... PATH", Value::path, options->words,
                    "Symbols: characters or codes (U+301C, 1-33, 0x8160); last the title to add "
                    "them to",
                    2);
    arguments.flag("--fold", options->fold,
                   "Take single-byte letters, digits, signs and half-width katakana for their "
                   "double-byte forms");
    declare_edit_options(arguments, options->edit);
    return [options](const Context &context) { return run_copy(context, *options); };
}

} // namespace

const Command put_command{.name = "put",
                          .summary = "Store symbols in a title, in place of its own or behind them",
                          .examples =
                              "  kigou put 私の記号/矢印 →←↑↓\n"
                              "  kigou put 私の記号/矢印 --append ⇒ ⇔ 2-10\n"
                              "  kigou put 私の記号/英字 --fold 'A B C'\n"
                              "  kigou put 私の記号/表 < symbols.txt",
                          .declare = declare_put};

const Command copy_command{.name = "copy",
                           .summary = "Add symbols to a title unless it holds them",
                           .examples = "  kigou copy → ※ 1-1 私の記号/よく使う",
                           .declare = declare_copy};

} // namespace kigou
