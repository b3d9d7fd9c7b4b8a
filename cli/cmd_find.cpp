// cmd_find.cpp - kigou find: symbols by reading, name, title, code or by themselves.
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/shell_word.h"
#include "cli/symbol_format.h"
#include "picker/failure.h"
#include "picker/locate.h"
#include "picker/search/search.h"
#include "picker/shipped_sets.h"
#include "picker/word_list.h"

namespace kigou {
namespace {

constexpr std::size_t most_on_terminal = 20;
constexpr const char *format_in_pipe =
    "%(symbol)\\t%(kuten)\\t%(unicode)\\t%(name)\\t%(readings)\\t%(paths)\\t%(code)";

struct Options {
    std::vector<std::string> words;
    std::optional<std::string> within, format;
    bool first = false, all = false;

    std::string text() const {
        std::string text;
        for (const std::string &word : words) text += (text.empty() ? "" : " ") + word;
        return text;
    }
};

/** What was found, and in what. */
class Findings {
  public:
    Findings(const Context &context, const Options &options) {
        SetFiles sets = find_sets(context.directories);
        Sjis path;
        if (options.within) {
            if (options.within->empty()) {
                throw Failure(FailureKind::refused, "--in wants the path of a title or a set");
            }
            const Located located = locate(sets, *options.within, std::nullopt);
            path = located.title().sjis;
            std::erase_if(sets.sets,
                          [&](const SetFile &set) { return set.path != located.snapshot.path(); });
            sets.spoilt.clear();
        }
        index_.refresh(sets);
        result_ = search(index_, options.text(), path);
        if (options.first && result_.found.size() > 1) result_.found.resize(1);
    }

    const SearchResult &result() const { return result_; }
    const std::vector<SpoiltFile> &not_searched() const { return index_.not_searched(); }

    ToldSymbol told(const FoundSymbol &found) const {
        std::vector<std::string> paths;
        for (const TitleNumber title : found.titles) paths.push_back(index_.path(title));
        ToldSymbol symbol(found.symbol, std::move(paths));
        symbol.code = found.code;
        return symbol;
    }

  private:
    SearchIndex index_;
    SearchResult result_;
};

const char *name_of(Match match) {
    switch (match) {
        case Match::itself:
            return "itself";
        case Match::reading:
            return "reading";
        case Match::lookalike:
            return "lookalike";
        case Match::reading_start:
            return "reading_start";
        case Match::name_word:
            return "name_word";
        case Match::title:
            return "title";
        case Match::inside:
            break;
    }
    return "inside";
}

void write_as_json(const Findings &findings) {
    const SearchResult &result = findings.result();
    nlohmann::ordered_json json = {{"found", nlohmann::json::array()},
                                   {"no_symbols", result.no_symbols},
                                   {"elsewhere", nlohmann::json::array()},
                                   {"meant", result.meant},
                                   {"not_searched", nlohmann::json::array()}};
    for (const FoundSymbol &found : result.found) {
        nlohmann::ordered_json symbol = json_of(findings.told(found));
        symbol["match"] = name_of(found.match);
        symbol["code"] = nullptr;
        if (!found.code.empty()) symbol["code"] = found.code;
        json["found"].push_back(std::move(symbol));
    }
    for (const Sjis &symbol : result.elsewhere) json["elsewhere"].push_back(to_utf8(symbol));
    for (const SpoiltFile &file : findings.not_searched()) {
        json["not_searched"].push_back({{"path", file.path}, {"reason", file.reason}});
    }
    write(json);
}

void write_for_terminal(const Findings &findings, bool all) {
    std::vector<std::vector<std::string>> lines;
    const auto &found = findings.result().found;
    const std::size_t shown = all ? found.size() : std::min(found.size(), most_on_terminal);
    for (std::size_t i = 0; i < shown; ++i) {
        const ToldSymbol symbol = findings.told(found[i]);
        std::string place = symbol.paths.empty() ? "in no set" : printable(symbol.paths.front());
        if (symbol.paths.size() > 1) place += " +" + std::to_string(symbol.paths.size() - 1);
        if (symbol.codes.repertoire == Repertoire::vendor) place += " (vendor)";
        const auto or_dash = [](const std::string &text) { return text.empty() ? "-" : text; };
        lines.push_back({cell_text(symbol.codes), or_dash(symbol.codes.kuten),
                         symbol.code.empty() ? symbol.codes.unicode : symbol.code,
                         or_dash(symbol.name), place});
    }
    write_table(lines);
    if (shown < found.size()) {
        complain(std::to_string(found.size() - shown) + " more; --all shows them");
    }
}

/** How to get symbols that are in none of the sets. */
void tell_of_elsewhere(const Context &context, const Options &options,
                       const std::vector<Sjis> &symbols) {
    if (symbols.empty()) return;
    std::string some;
    for (std::size_t i = 0; i < std::min<std::size_t>(symbols.size(), 10); ++i) {
        some += to_utf8(symbols[i]);
    }
    if (symbols.size() > 10) some += "...";
    if (options.within) return complain(some + " would be found without --in");
    const auto set = shipped_set_with(context.directories, symbols.front());
    if (!set) return complain(some + " would fit, but no set has it");
    complain(some + " would fit: " + (symbols.size() == 1 ? "a symbol" : "symbols") + " of " +
             set->title.text + ", which is not among your sets; to get it:");
    complain("  kigou import " + path_word(set->path));
}

void tell_rest(const Context &context, const Options &options, const Findings &findings) {
    const SearchResult &result = findings.result();
    for (const std::string &line : result.no_symbols) complain(line);
    tell_of_elsewhere(context, options, result.elsewhere);
    for (const SpoiltFile &file : findings.not_searched()) {
        const bool named = file.reason.find(file.path) != std::string::npos;
        complain(named ? file.reason : file.path + " cannot be searched: " + file.reason);
    }
    if (!result.found.empty() || !result.no_symbols.empty() || !result.elsewhere.empty()) return;
    const std::string meant = word_list(result.meant);
    complain("nothing is found for " + shortened(options.text()) +
             (meant.empty() ? "" : "; meant " + meant + "?"));
}

Status run(const Context &context, const Options &options) {
    const std::optional<SymbolFormat> format =
        options.format ? std::optional(SymbolFormat(*options.format)) : std::nullopt;
    if (options.text().find_first_not_of(' ') == std::string::npos) {
        throw Failure(FailureKind::refused, "there is nothing to look for");
    }
    const Findings findings(context, options);
    const auto &found = findings.result().found;
    if (context.json) {
        write_as_json(findings);
    } else if (options.first) {
        if (!found.empty()) {
            std::cout
                << (format ? *format : SymbolFormat("%(symbol)")).line(findings.told(found.front()))
                << '\n';
        }
    } else if (!format && terminal_columns()) {
        write_for_terminal(findings, options.all);
    } else {
        const char *const usual = options.first ? "%(symbol)" : format_in_pipe;
        const SymbolFormat lines = format ? *format : SymbolFormat(usual);
        for (const FoundSymbol &symbol : found)
            std::cout << lines.line(findings.told(symbol)) << '\n';
    }
    if (!context.json && (!options.first || found.empty())) tell_rest(context, options, findings);
    return found.empty() ? Status::nothing_found : Status::found;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.words("TEXT", Value::text, options->words,
                    "A reading (kana or romaji, also its beginning), a word of a name, a title, a "
                    "symbol or a code");
    arguments.option("--in", Value::path, options->within,
                     "Search this title or set alone, with all below it");
    arguments.flag("--first", options->first, "Write the best symbol alone");
    arguments.flag("--all", options->all, "Write all on a terminal too, not the best 20");
    arguments.option("-f,--format", Value::format, options->format,
                     "A line for each symbol: " + SymbolFormat::fields() + ", \\t, \\n");
    arguments.exclude("--format", "--json");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command find_command{.name = "find",
                           .summary = "Find symbols by reading, name, title or code",
                           .examples =
                               "  kigou find やじるし\n"
                               "  kigou find yajirushi\n"
                               "  kigou find arrow --in 一般記号\n"
                               "  kigou find 1-78\n"
                               "  kigou find 216E\n"
                               "  kigou find ほし -f '%(symbol) %(kuten) %(name)'\n"
                               "  kigou find --first こめ",
                           .declare = declare,
                           .notes =
                               "A reading is taken in kana of either kind and width and in romaji, "
                               "and before it is finished. A code is 1-78 or k:1-78 (kuten), "
                               "U+2103, s:818E or 0x818E (Shift_JIS), j:216E (JIS) or e:A1EE "
                               "(EUC-JP); four digits alone list all that they may mean.\n"
                               "In a pipe a line has symbol, kuten, Unicode, name, readings, "
                               "paths and the code that was typed, with tabs between.",
                           .exit_status = "0 found, 1 nothing found, 2 misuse or failure"};

} // namespace kigou
