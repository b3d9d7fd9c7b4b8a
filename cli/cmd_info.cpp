// cmd_info.cpp - kigou info: the codes of symbols, and where they stand in the sets.
#include <iostream>
#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "picker/failure.h"
#include "picker/symbol_places.h"
#include "picker/symbol_reading.h"

namespace kigou {
namespace {

struct Options {
    std::vector<std::string> symbols;
    std::optional<std::string> file;
};

void print(const SymbolCodes &codes, const std::vector<std::string> &paths) {
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
    for (const std::string &path : paths) line("stands in", printable(path));
}

/** Codes can be told without sets, so what cannot be searched is only mentioned. */
SymbolPlaces places(const Context &context, const Options &options,
                    const std::vector<Sjis> &symbols) {
    std::vector<SetFile> sets;
    if (options.file) {
        sets = {find_sets(context.directories).get(typed_title(*options.file))};
    } else {
        try {
            sets = find_sets(context.directories).sets;
        } catch (const Failure &failure) {
            complain(failure.what());
        }
    }
    SymbolPlaces places = places_of(symbols, sets);
    for (const SpoiltFile &file : places.not_searched) complain(file.reason);
    return places;
}

Status run(const Context &context, const Options &options) {
    std::vector<Sjis> symbols;
    for (const std::string &argument : options.symbols) {
        for (Sjis &symbol : symbols_named(argument)) symbols.push_back(std::move(symbol));
    }
    const SymbolPlaces found = places(context, options, symbols);
    Status status = Status::nothing_found;
    nlohmann::ordered_json json = {{"symbols", nlohmann::json::array()}};
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const SymbolCodes codes = codes_of(symbols[i]);
        if (codes.repertoire != Repertoire::none) status = Status::found;
        nlohmann::ordered_json symbol = json_of(codes);
        symbol["paths"] = found.paths[i];
        json["symbols"].push_back(std::move(symbol));
        if (!context.json) print(codes, found.paths[i]);
    }
    if (context.json) write(json);
    return status;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.words("SYMBOL", options->symbols,
                    "Characters, or codes: U+301C (Unicode), 1-33 (kuten), 0x8160 (Shift_JIS)");
    arguments.option("--file", options->file, "Title of the only symbol file to search");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command info_command{"info", "Show the codes of symbols and the titles that hold them",
                           "  kigou info →\n"
                           "  kigou info 〜※ 1-1 0x8740 U+2015\n"
                           "  kigou info 〒 --file 標準の記号 --json",
                           declare};

} // namespace kigou
