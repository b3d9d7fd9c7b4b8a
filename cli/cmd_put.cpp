// cmd_put.cpp - kigou put and kigou copy: symbols into a title.
#include <algorithm>
#include <memory>

#include "cli/command.h"
#include "cli/edit.h"
#include "cli/storable.h"
#include "cli/symbol_input.h"
#include "cli/working_copy.h"

namespace kigou {
namespace {

struct Options {
    std::string path;
    std::vector<std::string> words; /**< symbols; for copy the path stands last */
    EditOptions edit;
    bool append = false, fold = false, empty = false;
};

/** Reads pieces of text and collects every refusal before it fails. */
class Input {
  public:
    explicit Input(Reading reading) : reading_(reading) {}

    std::vector<Sjis> read(const std::string &text, const std::string &place) {
        SymbolLine line = read_symbols(text, reading_);
        for (const Refusal &refusal : line.refused) {
            refused_.push_back(place + ", column " + std::to_string(refusal.column) + ": " +
                               refusal.reason);
        }
        return std::move(line.symbols);
    }

    void fail_if_refused() const {
        if (refused_.empty()) return;
        std::vector<std::string> hints = refused_;
        const auto single = [](const std::string &reason) {
            return reason.find("single-byte") != std::string::npos;
        };
        if (reading_ != Reading::folded && std::any_of(refused_.begin(), refused_.end(), single)) {
            hints.emplace_back("--fold takes single-byte characters for their double-byte forms");
        }
        throw Failure(Status::failed,
                      counted(refused_.size(), "character") + " cannot be stored, so nothing is",
                      hints);
    }

  private:
    Reading reading_;
    std::vector<std::string> refused_;
};

/** A word that names a symbol by its code. */
bool is_code(const std::string &word) {
    return word.size() > 2 && (word.starts_with("U+") || word.starts_with("0x") ||
                               (word[0] >= '0' && word[0] <= '9' && word.find('-') != word.npos));
}

std::vector<Sjis> from_words(const std::vector<std::string> &words, bool fold) {
    std::vector<Sjis> symbols;
    Input input(fold ? Reading::folded : Reading::plain);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto more = !fold && is_code(words[i])
                              ? symbols_of(words[i])
                              : input.read(words[i], "argument " + std::to_string(i + 1));
        symbols.insert(symbols.end(), more.begin(), more.end());
    }
    input.fail_if_refused();
    return symbols;
}

/** Lines stay lines, so that an arrangement is kept. */
Sjis from_standard_input(bool fold) {
    Sjis data;
    Input input(fold ? Reading::folded : Reading::plain);
    std::size_t number = 0;
    for (const std::string &line : lines_of(standard_input("type the symbols"))) {
        const auto symbols = input.read(line, "line " + std::to_string(++number));
        for (const Sjis &symbol : symbols) data.insert(data.end(), symbol.begin(), symbol.end());
        if (!symbols.empty()) data.insert(data.end(), {'\r', '\n'});
    }
    input.fail_if_refused();
    return data;
}

/** Data of the title that the library means by a path: the first that bears it. */
Sjis data_of(const Host &host, const Title &path) {
    for (const WorkingBlock &block : working_copy(host).blocks) {
        if (block.path.sjis == path.sjis) return block.data;
    }
    return {};
}

void append(Sjis &data, const Sjis &more) {
    const bool ends_a_line = data.size() >= 2 && data.back() == '\n';
    if (!data.empty() && !ends_a_line) data.insert(data.end(), {'\r', '\n'});
    data.insert(data.end(), more.begin(), more.end());
}

void store(Edit &edit, const Title &path, const Sjis &data) {
    if (data.size() > most_data) {
        throw Failure(Status::failed,
                      path.text + " would hold " + std::to_string(data.size()) +
                          " bytes of at most " + std::to_string(most_data),
                      {"divide the symbols among several titles"});
    }
    edit.host().set_data(path, data);
}

void refuse_file(const Located &located) {
    if (located.path.sjis != located.tree.items.front().sjis) return;
    throw Failure(Status::failed, "a symbol file holds symbols only in its titles",
                  {"name one of them: 'kigou tree " + located.path.text + "' shows them",
                   "or make one: kigou add " + located.path.text + " TITLE"});
}

Status run_put(const Context &context, const Options &options) {
    Sjis typed;
    if (!options.words.empty()) {
        append_lines(typed, from_words(options.words, options.fold));
    } else if (!options.empty) {
        typed = from_standard_input(options.fold);
    }
    if (typed.empty() && !options.empty) {
        throw Failure(Status::failed, "no symbols were given, so nothing is stored",
                      {"--empty takes all symbols out of a title"});
    }
    Edit edit(context, options.edit);
    const Located located = edit.locate(options.path);
    refuse_file(located);
    const std::string &path = located.path.text;
    Sjis data = data_of(edit.host(), located.path);
    const std::size_t before = symbols_in(data).size();
    if (!options.append) data.clear();
    append(data, typed);
    store(edit, located.path, data);
    const std::size_t symbols = symbols_in(typed).size();
    edit.did(options.append ? "added " + counted(symbols, "symbol") + " to " + path
                            : "put " + counted(symbols, "symbol") + " into " + path +
                                  " in place of " + std::to_string(before),
             {{"change", options.append ? "append" : "put"},
              {"path", path},
              {"symbols", symbols},
              {"before", before}});
    edit.finish();
    return Status::found;
}

Status run_copy(const Context &context, const Options &options) {
    const std::vector<std::string> words(options.words.begin(), options.words.end() - 1);
    const std::vector<Sjis> typed = from_words(words, options.fold);
    Edit edit(context, options.edit);
    const Located located = edit.locate(options.words.back());
    refuse_file(located);
    const std::string &path = located.path.text;
    Sjis data = data_of(edit.host(), located.path);
    std::vector<Sjis> held = symbols_in(data);
    const std::size_t before = held.size();
    std::vector<Sjis> fresh;
    for (const Sjis &symbol : typed) {
        if (std::find(held.begin(), held.end(), symbol) != held.end()) continue;
        held.push_back(symbol);
        fresh.push_back(symbol);
    }
    Sjis lines;
    append_lines(lines, fresh);
    append(data, lines);
    if (!fresh.empty()) {
        store(edit, located.path, data);
        edit.did(
            "added " + counted(fresh.size(), "symbol") + " to " + path + "; " +
                std::to_string(typed.size() - fresh.size()) + " stood there already",
            {{"change", "append"}, {"path", path}, {"symbols", fresh.size()}, {"before", before}});
    }
    edit.finish();
    return Status::found;
}

Body declare_put(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("PATH", options->path, "Title to store in")->required()->type_name("");
    app.add_option("SYMBOL", options->words,
                   "Characters, with blanks between or not, or codes (U+301C, 1-33, 0x8160); none: "
                   "the lines of the standard input")
        ->type_name("");
    app.add_flag("--append", options->append, "Keep the symbols that stand there");
    app.add_flag("--fold", options->fold,
                 "Take single-byte letters, digits, signs and half-width katakana for their "
                 "double-byte forms");
    app.add_flag("--empty", options->empty, "Take all symbols out when none are given");
    declare_edit_options(app, options->edit);
    return [options](const Context &context) { return run_put(context, *options); };
}

Body declare_copy(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("SYMBOL... PATH", options->words,
                   "Symbols: characters or codes (U+301C, 1-33, 0x8160); last the title to add "
                   "them to")
        ->required()
        ->type_name("")
        ->expected(2, CLI::detail::expected_max_vector_size);
    app.add_flag("--fold", options->fold,
                 "Take single-byte letters, digits, signs and half-width katakana for their "
                 "double-byte forms");
    declare_edit_options(app, options->edit);
    return [options](const Context &context) { return run_copy(context, *options); };
}

} // namespace

const Command put_command{"put", "Store symbols in a title, in place of its own or behind them",
                          "  kigou put 私の記号/矢印 →←↑↓\n"
                          "  kigou put 私の記号/矢印 --append ⇒ ⇔ 2-10\n"
                          "  kigou put 私の記号/英字 --fold 'A B C'\n"
                          "  kigou put 私の記号/表 < symbols.txt",
                          declare_put};

const Command copy_command{"copy", "Add symbols to a title unless it holds them",
                           "  kigou copy → ※ 1-1 私の記号/よく使う", declare_copy};

} // namespace kigou
