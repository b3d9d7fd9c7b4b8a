// cmd_info.cpp - kigou info: the codes of symbols, and where they stand in the sets.
#include <algorithm>
#include <charconv>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "cli/command.h"
#include "cli/host.h"
#include "cli/output.h"
#include "cli/symbol_codes.h"
#include "cli/title_path.h"
#include "common/acccom.h"

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

std::optional<unsigned> number(std::string_view digits, int base) {
    unsigned value = 0;
    const char *const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, value, base);
    if (digits.empty() || error != std::errc{} || rest != end) return std::nullopt;
    return value;
}

/** "1-33": row and cell. */
std::optional<Sjis> from_kuten(std::string_view text) {
    const auto dash = text.find('-');
    if (dash == std::string_view::npos) return std::nullopt;
    const auto row = number(text.substr(0, dash), 10);
    const auto cell = number(text.substr(dash + 1), 10);
    if (!row || !cell) return std::nullopt;
    if (*row < 1 || *row > 94 || *cell < 1 || *cell > 94) {
        throw Failure(Status::failed, "kuten " + std::string(text) + " is not from 1-1 to 94-94");
    }
    const std::array<unsigned char, 3> euc{static_cast<unsigned char>(*row + 0xA0),
                                           static_cast<unsigned char>(*cell + 0xA0), 0};
    const std::unique_ptr<unsigned char, decltype(&CM_free)> sjis(CM_euc2sjis(euc.data()),
                                                                  &CM_free);
    if (!sjis) throw std::bad_alloc();
    return Sjis{sjis.get()[0], sjis.get()[1]};
}

/** "0x8160": a Shift_JIS code. */
std::optional<Sjis> from_code(std::string_view text) {
    if (text.size() != 6 || !(text.starts_with("0x") || text.starts_with("0X"))) {
        return std::nullopt;
    }
    const auto code = number(text.substr(2), 16);
    if (!code) return std::nullopt;
    return Sjis{static_cast<unsigned char>(*code >> 8), static_cast<unsigned char>(*code & 0xFF)};
}

/** "U+301C": the UTF-8 of a character; other text as it is. */
std::string from_unicode(const std::string &text) {
    if (!text.starts_with("U+") && !text.starts_with("u+")) return text;
    const auto code = number(std::string_view(text).substr(2), 16);
    if (!code || *code > 0x10FFFF) return text;
    return to_utf8(static_cast<char32_t>(*code));
}

/** The symbols that an argument names: each of its characters, or the one of its code. */
std::vector<Sjis> symbols_of(const std::string &argument) {
    if (auto symbol = from_kuten(argument)) return {*symbol};
    if (auto symbol = from_code(argument)) return {*symbol};
    if (argument.empty()) throw Failure(Status::failed, "an empty argument names no symbol");
    std::vector<Sjis> symbols;
    for (const char32_t character : to_characters(from_unicode(argument))) {
        const std::string utf8 = to_utf8(character);
        Sjis symbol;
        try {
            symbol = to_sjis(utf8);
        } catch (const Failure &) {
            to_sjis(argument); // names the place in the argument as typed
            throw;
        }
        if (symbol.size() != 2) {
            std::vector<std::string> hints;
            if (character > 0x20 && character < 0x7F) {
                hints.push_back("the full-width character is " + to_utf8(character + 0xFEE0));
            }
            throw Failure(Status::failed,
                          "'" + utf8 + "' is a single-byte character; symbols have two bytes",
                          hints);
        }
        symbols.push_back(std::move(symbol));
    }
    return symbols;
}

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
