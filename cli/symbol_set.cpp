// symbol_set.cpp - see symbol_set.h.
#include "cli/symbol_set.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli/failure.h"
#include "cli/storable.h"
#include "cli/symbol_input.h"
#include "common/sjis_text.h"

namespace kigou {
namespace {

constexpr std::string_view head = "〈記号〉";
constexpr std::string_view name_head = "名称=";
constexpr std::string_view tsv_head = "file\tpath\tsymbols";
constexpr std::size_t hyphens = 40;

void add_escape(std::string &text, const unsigned char *bytes, std::size_t count) {
    text += '{';
    for (std::size_t i = 0; i < count; ++i) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02X", bytes[i]);
        text += digits.data();
    }
    text += '}';
}

/** Whether a code comes back from its UTF-8. */
bool is_readable(const Sjis &symbol) {
    if (repertoire_of(symbol) == Repertoire::none) return false;
    try {
        return to_sjis(to_utf8(symbol)) == symbol;
    } catch (const Failure &) {
        return false;
    }
}

std::string written_symbols(const Sjis &line) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); i += 2) {
        const Sjis unit(line.begin() + static_cast<std::ptrdiff_t>(i),
                        line.begin() + static_cast<std::ptrdiff_t>(std::min(i + 2, line.size())));
        if (is_readable(unit)) {
            text += to_utf8(unit);
        } else {
            add_escape(text, unit.data(), unit.size());
        }
    }
    return text;
}

std::string written_title(const Sjis &title) {
    std::string text;
    for (std::size_t i = 0; i < title.size(); ++i) {
        const unsigned char byte = title[i];
        if (acc::is_lead(byte) && i + 1 < title.size() && is_readable({byte, title[i + 1]})) {
            text += to_utf8(Sjis{byte, title[++i]});
        } else if ((byte >= 0x20 && byte < 0x7F && byte != '{' && byte != '}') ||
                   (byte >= 0xA1 && byte <= 0xDF)) {
            text += to_utf8(Sjis{byte});
        } else {
            add_escape(text, &byte, 1);
        }
    }
    return text;
}

/** The other way round. @throws Failure */
Sjis read_title(const std::string &text) {
    Sjis title;
    std::string plain;
    const auto end_plain = [&] {
        const Sjis bytes = to_sjis(plain);
        title.insert(title.end(), bytes.begin(), bytes.end());
        plain.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned byte = 0;
        int used = 0;
        if (std::sscanf(text.c_str() + i, "{%2X}%n", &byte, &used) == 1 && used == 4) {
            end_plain();
            title.push_back(static_cast<unsigned char>(byte));
            i += 3;
        } else {
            plain += text[i];
        }
    }
    end_plain();
    return title;
}

/** Lines of the data of a block, without CR LF. */
std::vector<Sjis> lines_of_data(const Sjis &data) {
    std::vector<Sjis> lines;
    Sjis line;
    for (std::size_t i = 0; i < data.size(); i += 2) {
        const bool whole = i + 1 < data.size();
        if (whole && data[i] == '\r' && data[i + 1] == '\n') {
            lines.push_back(std::exchange(line, {}));
            continue;
        }
        line.push_back(data[i]);
        if (whole) line.push_back(data[i + 1]);
    }
    if (!line.empty()) lines.push_back(std::move(line));
    return lines;
}

/** Collects a set, and what cannot be read of it. */
class Reader {
  public:
    explicit Reader(std::vector<LeftOut> &left_out) : left_out_(left_out) {}

    void leave_out(std::string place, std::string reason) {
        left_out_.push_back({std::move(place), std::move(reason)});
    }

    /** @return false when the title cannot be read; what follows for it is left out then */
    bool begin_block(const std::string &path, const std::string &place) {
        try {
            set.blocks.push_back({read_title(path), {}, place});
            return true;
        } catch (const Failure &failure) {
            leave_out(place, "the title " + path + " with its symbols: " + failure.what());
            return false;
        }
    }

    void add_line(const std::string &text, const std::string &place) {
        SymbolLine line = read_symbols(text, Reading::escaped);
        for (const Refusal &refusal : line.refused) {
            leave_out(place + ", column " + std::to_string(refusal.column), refusal.reason);
        }
        Sjis &data = set.blocks.back().data;
        for (const Sjis &symbol : line.symbols)
            data.insert(data.end(), symbol.begin(), symbol.end());
        if (!line.symbols.empty() || text.empty()) data.insert(data.end(), {'\r', '\n'});
    }

    SymbolSet set;

  private:
    std::vector<LeftOut> &left_out_;
};

std::string line_number(std::size_t index) {
    return "line " + std::to_string(index + 1);
}

bool is_hyphen_line(const std::string &line) {
    return line.size() >= hyphens && line.find_first_not_of('-') == std::string::npos;
}

std::string write_text(const SymbolSet &set) {
    const std::string rule = std::string(hyphens, '-') + "\n";
    std::string text =
        std::string(head) + "\n" + std::string(name_head) + written_title(set.file) + "\n";
    for (const SetBlock &block : set.blocks) {
        text += "［" + written_title(block.path) + "］\n" + rule;
        for (const Sjis &line : lines_of_data(block.data)) text += written_symbols(line) + "\n";
        text += rule;
    }
    return text;
}

void read_text(const std::vector<std::string> &lines, Reader &reader) {
    if (lines.size() < 2 || !lines[1].starts_with(name_head)) {
        throw Failure(Status::failed, "line 2 does not begin with " + std::string(name_head));
    }
    reader.set.file = read_title(lines[1].substr(name_head.size()));
    enum { outside, before_data, data } state = outside;
    bool kept = false;
    for (std::size_t i = 2; i < lines.size(); ++i) {
        const std::string &line = lines[i];
        if (is_hyphen_line(line) && state != outside) {
            state = state == before_data ? data : outside;
        } else if (state == data) {
            if (kept) reader.add_line(line, line_number(i));
        } else if (state == outside && line.starts_with("［") && line.ends_with("］")) {
            const std::size_t bracket = std::string_view("［").size();
            kept =
                reader.begin_block(line.substr(bracket, line.size() - 2 * bracket), line_number(i));
            state = before_data;
        } else if (!line.empty()) {
            reader.leave_out(line_number(i), "'" + line + "' stands outside a block");
        }
    }
    if (state != outside)
        reader.leave_out(line_number(lines.size() - 1), "the last block has no end line");
}

std::string write_json(const SymbolSet &set) {
    nlohmann::ordered_json json = {{"file", written_title(set.file)},
                                   {"titles", nlohmann::json::array()}};
    for (const SetBlock &block : set.blocks) {
        nlohmann::ordered_json lines = nlohmann::json::array();
        for (const Sjis &line : lines_of_data(block.data)) lines.push_back(written_symbols(line));
        json["titles"].push_back({{"path", written_title(block.path)}, {"lines", lines}});
    }
    return json.dump(2) + "\n";
}

void read_json(std::string_view text, Reader &reader) {
    try {
        const auto json = nlohmann::json::parse(text);
        reader.set.file = read_title(json.at("file"));
        std::size_t number = 0;
        for (const auto &title : json.at("titles")) {
            const std::string place = "title " + std::to_string(++number);
            if (!reader.begin_block(title.at("path"), place)) continue;
            std::size_t line = 0;
            for (const auto &symbols : title.at("lines")) {
                reader.add_line(symbols, place + ", line " + std::to_string(++line));
            }
        }
    } catch (const nlohmann::json::exception &error) {
        throw Failure(Status::failed, std::string("the JSON cannot be read: ") + error.what(),
                      {R"(it must look like {"file": "...", "titles": [{"path": "...", )"
                       R"("lines": ["..."]}]})"});
    }
}

std::string write_tsv(const SymbolSet &set) {
    const std::string file = written_title(set.file);
    std::string text = std::string(tsv_head) + "\n";
    const auto row = [&](const std::string &path, const std::string &symbols) {
        text += file + "\t" + path + "\t" + symbols + "\n";
    };
    if (set.blocks.empty()) row("", "");
    for (const SetBlock &block : set.blocks) {
        const std::string path = written_title(block.path);
        const auto lines = lines_of_data(block.data);
        if (lines.empty()) row(path, "");
        for (const Sjis &line : lines) row(path, written_symbols(line));
    }
    return text;
}

void read_tsv(const std::vector<std::string> &lines, Reader &reader) {
    std::string last_path;
    bool kept = false;
    bool first_row_empty = false;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (lines[i].empty()) continue;
        const auto first = lines[i].find('\t');
        const auto second = first == std::string::npos ? first : lines[i].find('\t', first + 1);
        if (second == std::string::npos) {
            reader.leave_out(line_number(i), "the row does not have three columns");
            continue;
        }
        if (reader.set.file.empty()) reader.set.file = read_title(lines[i].substr(0, first));
        const std::string path = lines[i].substr(first + 1, second - first - 1);
        const std::string symbols = lines[i].substr(second + 1);
        if (path.empty()) continue; // a file without titles
        const bool begins = path != std::exchange(last_path, path);
        if (begins) kept = reader.begin_block(path, line_number(i));
        // A first row without symbols is that of an empty title, unless more rows follow.
        if (kept && first_row_empty && !begins) reader.add_line("", line_number(i));
        first_row_empty = begins && symbols.empty();
        if (kept && !first_row_empty) reader.add_line(symbols, line_number(i));
    }
}

} // namespace

std::string write_set(const SymbolSet &set, Format format) {
    switch (format) {
        case Format::json:
            return write_json(set);
        case Format::tsv:
            return write_tsv(set);
        case Format::text:
            break;
    }
    return write_text(set);
}

std::optional<Format> format_of(std::string_view text) {
    if (text.starts_with(head)) return Format::text;
    if (text.starts_with(tsv_head)) return Format::tsv;
    const auto start = text.find_first_not_of(" \t\r\n");
    if (start != std::string_view::npos && text[start] == '{') return Format::json;
    return std::nullopt;
}

SymbolSet read_set(std::string_view text, Format format, std::vector<LeftOut> &left_out) {
    Reader reader(left_out);
    if (format == Format::json) {
        read_json(text, reader);
    } else if (format_of(text) != format) {
        throw Failure(Status::failed, "the text does not begin as an export does");
    } else if (format == Format::tsv) {
        read_tsv(lines_of(text), reader);
    } else {
        read_text(lines_of(text), reader);
    }
    return std::move(reader.set);
}

} // namespace kigou
