// cmd_list.cpp - kigou list: what stands below one title.
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/symbol_format.h"
#include "picker/locate.h"
#include "picker/set_formats.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

struct Options {
    std::string path;
    std::optional<std::string> file, format;
    bool codes = false, titles = false, symbols = false;
};

/** A line for each symbol; a head where a person reads them. */
void write_codes(const std::vector<SymbolCodes> &symbols) {
    std::vector<std::vector<std::string>> lines;
    if (terminal_columns()) lines.push_back({"Shift_JIS", "JIS", "kuten", "Unicode", "symbol"});
    for (const SymbolCodes &codes : symbols) {
        const auto cell = [](const std::string &text) { return text.empty() ? "-" : text; };
        const bool vendor = codes.repertoire == Repertoire::vendor;
        lines.push_back({codes.sjis, cell(codes.jis), cell(codes.kuten), cell(codes.unicode),
                         cell_text(codes) + (vendor ? " (vendor)" : "")});
    }
    write_table(lines);
}

void write_lines(const std::vector<Sjis> &symbols, const std::string &path,
                 const SymbolFormat &format) {
    for (const Sjis &symbol : symbols) std::cout << format.line({symbol, {path}}) << '\n';
}

/** What one title holds, as it is asked for. */
class Listing {
  public:
    Listing(const Options &options, const Located &located)
        : options_(options), snapshot_(located.snapshot), number_(located.number) {
        for (const Sjis &symbol : symbols_in(snapshot_.data(number_))) {
            symbols_.push_back(codes_of(symbol));
        }
    }

    void write_as_json() const {
        nlohmann::ordered_json json = {{"path", snapshot_.title(number_).text},
                                       {"titles", nlohmann::json::array()},
                                       {"symbols", nlohmann::json::array()},
                                       {"truncated", false}};
        for (const std::size_t child : snapshot_.children(number_)) {
            const std::string path = snapshot_.title(child).text;
            json["titles"].push_back({{"path", path},
                                      {"title", last_title(path)},
                                      {"children", !snapshot_.children(child).empty()}});
        }
        for (const SymbolCodes &codes : symbols_) json["symbols"].push_back(json_of(codes));
        write(json);
    }

    void write_for_terminal(std::size_t columns) const {
        std::cout << printable(snapshot_.title(number_).text) << '\n';
        if (!options_.symbols) write_titles("  ");
        if (options_.titles) return;
        if (options_.codes && !symbols_.empty()) return write_codes(symbols_);
        std::vector<std::string> cells;
        for (const SymbolCodes &codes : symbols_) cells.push_back(cell_text(codes));
        write_grid(cells, columns);
    }

    /** Titles, an empty line, and the symbols in their lines, as put reads them. */
    void write_for_pipe() const {
        const bool has_titles = !options_.symbols && !snapshot_.children(number_).empty();
        if (has_titles) write_titles("");
        if (options_.titles || symbols_.empty()) return;
        if (has_titles) std::cout << '\n';
        if (options_.codes) return write_codes(symbols_);
        for (const Sjis &line : lines_of_data(snapshot_.data(number_))) {
            std::cout << written_symbols(line) << '\n';
        }
    }

  private:
    void write_titles(const char *indent) const {
        for (const std::size_t child : snapshot_.children(number_)) {
            std::cout << indent << printable(last_title(snapshot_.title(child).text))
                      << (snapshot_.children(child).empty() ? "" : separator) << '\n';
        }
    }

    const Options &options_;
    const Snapshot &snapshot_;
    std::size_t number_;
    std::vector<SymbolCodes> symbols_;
};

Status run(const Context &context, const Options &options) {
    const Located located = locate(find_sets(context.directories), options.path, options.file);
    const Listing listing(options, located);
    if (options.format && !context.json) {
        write_lines(symbols_in(located.snapshot.data(located.number)), located.title().text,
                    SymbolFormat(*options.format));
    } else if (context.json) {
        listing.write_as_json();
    } else if (const auto columns = terminal_columns()) {
        listing.write_for_terminal(*columns);
    } else {
        listing.write_for_pipe();
    }
    return Status::found;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.optional_word("PATH", Value::path, options->path,
                            "Titles joined by \"／\" or \"/\", with or without the file title; "
                            "none: the titles of the first level");
    arguments.option("--file", Value::file_title, options->file,
                     "Title of the symbol file when the path does not begin with it "
                     "(default: " +
                         std::string(standard_title) + ")");
    arguments.flag("--codes", options->codes, "Show the codes of each symbol");
    arguments.flag("--titles", options->titles, "Show the titles alone");
    arguments.flag("--symbols", options->symbols, "Show the symbols alone");
    arguments.option("-f,--format", Value::format, options->format,
                     "A line for each symbol: " + SymbolFormat::fields() + ", \\t, \\n");
    arguments.exclude("--format", "--codes");
    arguments.exclude("--format", "--json");
    arguments.exclude("--symbols", "--titles");
    arguments.exclude("--format", "--titles");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command list_command{
    .name = "list",
    .summary = "List the titles and the symbols below a title",
    .examples =
        "  kigou list 標準の記号／一般記号／矢印\n"
        "  kigou list 一般記号/矢印 --codes\n"
        "  kigou list 丸数字 --file 拡張の記号 --json\n"
        "  kigou list 一般記号/矢印 -f '%(symbol) %(kuten) %(name)'\n"
        "  kigou list 一般記号/矢印 | kigou put 私の記号/矢印",
    .declare = declare,
    .notes = "A title that ends with \"／\" in the list has titles below it."};

} // namespace kigou
