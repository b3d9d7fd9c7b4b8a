// cmd_show.cpp - kigou show: names, readings, codes and look-alikes of symbols, and where they
// stand in the sets.
#include <iostream>
#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/symbol_format.h"
#include "picker/failure.h"
#include "picker/symbol_places.h"
#include "picker/symbol_reading.h"

namespace kigou {
namespace {

struct Options {
    std::vector<std::string> symbols;
    std::optional<std::string> file, format;
};

void print(const ToldSymbol &symbol) {
    const auto line = [](const char *name, const std::string &value) {
        std::cout << "  " << padded(name, 11) << (value.empty() ? "-" : printable(value)) << '\n';
    };
    const auto line_of = [&](const char *name, const std::vector<std::string> &values,
                             const char *between) {
        std::string text;
        for (const std::string &value : values) text += (text.empty() ? "" : between) + value;
        if (!text.empty()) line(name, text);
    };
    const SymbolCodes &codes = symbol.codes;
    std::cout << cell_text(codes) << '\n';
    if (!symbol.name.empty()) line("name", symbol.name + ", " + symbol.english);
    line_of("read", symbol.readings, ", ");
    line("Shift_JIS", codes.sjis);
    line("JIS", codes.jis);
    line("kuten", codes.kuten);
    line("Unicode", codes.unicode);
    if (codes.repertoire == Repertoire::vendor) line("note", "vendor character, not in JIS X 0208");
    if (codes.repertoire == Repertoire::none) line("note", "no character has this code");
    line_of("looks like", symbol.lookalikes, " ");
    for (const std::string &path : symbol.paths) line("stands in", path);
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
    const std::optional<SymbolFormat> format =
        options.format ? std::optional(SymbolFormat(*options.format)) : std::nullopt;
    const SymbolPlaces found = places(context, options, symbols);
    Status status = Status::nothing_found;
    nlohmann::ordered_json json = {{"symbols", nlohmann::json::array()}};
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const ToldSymbol symbol(symbols[i], found.paths[i]);
        if (symbol.codes.repertoire != Repertoire::none) status = Status::found;
        if (context.json) {
            nlohmann::ordered_json told = json_of(symbol);
            told["lookalikes"] = symbol.lookalikes;
            json["symbols"].push_back(std::move(told));
        } else if (format) {
            std::cout << format->line(symbol) << '\n';
        } else {
            print(symbol);
        }
    }
    if (context.json) write(json);
    return status;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.words("CHARACTER", Value::symbols, options->symbols,
                    "Characters, or codes: U+301C (Unicode), 1-33 (kuten), 0x8160 (Shift_JIS), "
                    "j:2141 (JIS), e:A1C1 (EUC-JP)");
    arguments.option("--file", Value::file_title, options->file,
                     "Title of the only symbol file to search");
    arguments.option("-f,--format", Value::format, options->format,
                     "A line for each symbol: " + SymbolFormat::fields() + ", \\t, \\n");
    arguments.exclude("--format", "--json");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command show_command{
    .name = "show",
    .summary = "Show names, readings, codes and look-alikes of symbols, and where they stand",
    .examples =
        "  kigou show →\n"
        "  kigou show 〜※ 1-1 0x8740 U+2015\n"
        "  kigou show 〒 --file 標準の記号 --json\n"
        "  kigou show →← -f '%(symbol) %(kuten) %(name)'",
    .declare = declare,
    .alias = "info"};

} // namespace kigou
