// cmd_info.cpp - kigou info: the codes of symbols, and where they stand in the sets.
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "cli/command.h"
#include "cli/host.h"
#include "cli/output.h"
#include "cli/symbol_codes.h"
#include "cli/symbol_input.h"
#include "cli/title_path.h"

namespace kigou {
namespace {

// As for the counts of the tree, each title is positioned once.
constexpr std::size_t titles_searched = 2000;

struct Options {
    std::vector<std::string> symbols;
    std::optional<std::string> file;
};

struct Asked {
    Sjis symbol;
    std::vector<std::string> paths; /**< full paths of the titles that hold it */
};

void search_title(Host &host, const Title &title, std::vector<Asked> &asked) {
    const std::vector<Sjis> symbols = host.contents(title).symbols;
    for (Asked &one : asked) {
        if (std::find(symbols.begin(), symbols.end(), one.symbol) != symbols.end()) {
            one.paths.push_back(title.text);
        }
    }
}

void search_open_file(Host &host, std::vector<Asked> &asked) {
    const Listing<Title> tree = host.tree();
    const std::string &file = tree.items.front().text;
    if (tree.cut_short || tree.items.size() > titles_searched) {
        complain(file + " is not searched: it has more than " + std::to_string(titles_searched) +
                 " titles");
        return;
    }
    for (const Title &title : tree.items) {
        try {
            search_title(host, title, asked);
        } catch (const Failure &failure) {
            complain(failure.what()); // the others can be searched all the same
        }
    }
}

/** Codes can be told without sets, so one that cannot be searched is only mentioned. */
void search_all_files(Host &host, std::vector<Asked> &asked) {
    try {
        std::set<Sjis> seen;
        for (const Title &file : host.file_titles().items) {
            if (!seen.insert(file.sjis).second) continue;
            try {
                host.open(file);
                search_open_file(host, asked);
            } catch (const Failure &failure) {
                complain(failure.what());
            }
        }
    } catch (const Failure &failure) {
        complain(failure.what());
    }
}

void print(const Asked &asked, const SymbolCodes &codes) {
    const auto line = [](const char *name, const std::string &value) {
        std::cout << "  " << padded(name, 11) << (value.empty() ? "-" : value) << '\n';
    };
    std::cout << cell_text(codes) << '\n';
    line("Shift_JIS", codes.sjis);
    line("JIS", codes.jis);
    line("kuten", codes.kuten);
    line("Unicode", codes.unicode);
    if (codes.repertoire == Repertoire::vendor) line("note", "vendor character, not in JIS X 0208");
    if (codes.repertoire == Repertoire::none) line("note", "no character has this code");
    for (const std::string &path : asked.paths) line("stands in", printable(path));
}

Status run(const Context &context, const Options &options) {
    std::vector<Asked> asked;
    for (const std::string &argument : options.symbols) {
        for (Sjis &symbol : symbols_of(argument)) asked.push_back({std::move(symbol), {}});
    }
    Host host(context.directories);
    if (!options.file) {
        search_all_files(host, asked);
    } else {
        host.open(typed_title(*options.file));
        search_open_file(host, asked);
    }
    Status status = Status::nothing_found;
    nlohmann::ordered_json json = {{"symbols", nlohmann::json::array()}};
    for (const Asked &one : asked) {
        const SymbolCodes codes = codes_of(one.symbol);
        if (codes.repertoire != Repertoire::none) status = Status::found;
        nlohmann::ordered_json symbol = to_json(codes);
        symbol["paths"] = one.paths;
        json["symbols"].push_back(std::move(symbol));
        if (!context.json) print(one, codes);
    }
    if (context.json) std::cout << json.dump(2) << '\n';
    return status;
}

Body declare(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("SYMBOL", options->symbols,
                   "Characters, or codes: U+301C (Unicode), 1-33 (kuten), 0x8160 (Shift_JIS)")
        ->required();
    app.add_option("--file", options->file, "Title of the only symbol file to search");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command info_command{"info", "Show the codes of symbols and the titles that hold them",
                           "  kigou info →\n"
                           "  kigou info 〜※ 1-1 0x8740 U+2015\n"
                           "  kigou info 〒 --file 標準の記号 --json",
                           declare};

} // namespace kigou
