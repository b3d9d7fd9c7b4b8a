// set_reading.cpp - reading sets; see set_formats.h. set_formats.cpp writes them.
#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "picker/check.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/set_formats.h"
#include "picker/table.h"
#include "sym/format.h"

namespace kigou {
namespace {

using Bytes = std::span<const unsigned char>;

constexpr std::string_view head = "〈記号〉";
constexpr std::string_view name_head = "名称=";
constexpr std::size_t hyphens = 40;

/** A title as set_formats.cpp writes it. @throws Failure (refused) */
Sjis read_title(const std::string &text) {
    Sjis title;
    std::string plain;
    const auto end_plain = [&] {
        const Sjis bytes = to_sjis(plain);
        title.insert(title.end(), bytes.begin(), bytes.end());
        plain.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned code = 0;
        int used = 0;
        const bool escaped = std::sscanf(text.c_str() + i, "{%4X}%n", &code, &used) == 1;
        if (escaped && (used == 4 || used == 6)) { // {7B}, or {8740}
            end_plain();
            if (used == 6) title.push_back(static_cast<unsigned char>(code >> 8));
            title.push_back(static_cast<unsigned char>(code & 0xFF));
            i += static_cast<std::size_t>(used) - 1;
        } else {
            plain += text[i];
        }
    }
    end_plain();
    return title;
}

/** Collects a set, and what cannot be read of it. */
class Reader {
  public:
    explicit Reader(LeftOutList &left_out) : left_out_(left_out) {}

    void leave_out(const std::string &place, const std::string &reason) {
        left_out_.add(place, reason);
    }

    /** @return false when the title cannot be read; what follows for it is left out then */
    bool begin_block(const std::string &path, const std::string &place) {
        try {
            set.blocks.push_back({read_title(path), {}, place});
            return true;
        } catch (const Failure &failure) {
            leave_out(place,
                      "the title " + shortened(path) + " with its symbols: " + failure.what());
            return false;
        }
    }

    void add_line(const std::string &text, const std::string &place) {
        const auto symbols = read_symbols(text, Reading::escaped, place, left_out_);
        Sjis &data = set.blocks.back().data;
        for (const Sjis &symbol : symbols) data.insert(data.end(), symbol.begin(), symbol.end());
        if (!symbols.empty() || text.empty()) data.insert(data.end(), {'\r', '\n'});
    }

    SymbolSet set;

  private:
    LeftOutList &left_out_;
};

std::string line_number(std::size_t number) {
    return "line " + std::to_string(number);
}

bool is_hyphen_line(const std::string &line) {
    return line.size() >= hyphens && line.find_first_not_of('-') == std::string::npos;
}

void read_text(const std::vector<std::string> &lines, Reader &reader) {
    if (lines.size() < 2 || !lines[1].starts_with(name_head)) {
        throw Failure(FailureKind::refused, "line 2 does not begin with " + std::string(name_head));
    }
    reader.set.file = read_title(lines[1].substr(name_head.size()));
    enum { outside, before_data, data } state = outside;
    bool kept = false;
    for (std::size_t i = 2; i < lines.size(); ++i) {
        const std::string &line = lines[i];
        const std::string place = line_number(i + 1);
        if (is_hyphen_line(line) && state != outside) {
            state = state == before_data ? data : outside;
        } else if (state == data) {
            if (kept) reader.add_line(line, place);
        } else if (state == outside && line.starts_with("［") && line.ends_with("］")) {
            const std::size_t bracket = std::string_view("［").size();
            kept = reader.begin_block(line.substr(bracket, line.size() - 2 * bracket), place);
            state = before_data;
        } else if (!line.empty()) {
            reader.leave_out(place, "'" + shortened(line) + "' stands outside a block");
        }
    }
    if (state != outside) {
        reader.leave_out(line_number(lines.size()), "the last block has no end line");
    }
}

/** A member that is a text; nothing when there is none. */
const std::string *text_of(const nlohmann::json &json, const char *member) {
    const auto found = json.is_object() ? json.find(member) : json.end();
    if (!json.is_object() || found == json.end()) return nullptr;
    return found->get_ptr<const std::string *>();
}

void read_json_title(const nlohmann::json &title, const std::string &place, Reader &reader) {
    const std::string *path = text_of(title, "path");
    if (!path) return reader.leave_out(place, R"(it has no "path" that is a text)");
    if (!reader.begin_block(*path, place)) return;
    const auto lines = title.find("lines");
    if (lines == title.end() || !lines->is_array()) {
        return reader.leave_out(
            place, R"(the symbols of )" + shortened(*path) + R"(: "lines" is no list)");
    }
    std::size_t number = 0;
    for (const nlohmann::json &line : *lines) {
        const std::string of_line = place + ", line " + std::to_string(++number);
        if (const auto *symbols = line.get_ptr<const std::string *>()) {
            reader.add_line(*symbols, of_line);
        } else {
            reader.leave_out(of_line, "it is no text");
        }
    }
}

[[noreturn]] void refuse_json(const std::string &reason) {
    throw Failure(FailureKind::refused, "the JSON cannot be read: " + reason,
                  {R"(it must look like {"file": "...", "titles": [{"path": "...", )"
                   R"("lines": ["..."]}]})"});
}

void read_json(const std::string &text, Reader &reader) {
    nlohmann::json json;
    std::vector<std::set<std::string>> keys; // of the objects that are open
    std::string twice;
    const auto note = [&](int, nlohmann::json::parse_event_t event, nlohmann::json &parsed) {
        using Event = nlohmann::json::parse_event_t;
        if (event == Event::object_start) keys.emplace_back();
        if (event == Event::object_end) keys.pop_back();
        if (event == Event::key && !keys.back().insert(parsed.get<std::string>()).second) {
            twice = parsed.get<std::string>();
        }
        return true;
    };
    try {
        json = nlohmann::json::parse(text, note);
    } catch (const nlohmann::json::parse_error &error) {
        const auto before = std::string_view(text).substr(0, error.byte);
        refuse_json("it breaks off or has a mistake in line " +
                    std::to_string(1 + std::count(before.begin(), before.end(), '\n')));
    } catch (const nlohmann::json::exception &) {
        refuse_json("it has a number that is too large");
    }
    if (!twice.empty()) refuse_json("\"" + shortened(twice) + "\" stands twice in one object");
    const std::string *file = text_of(json, "file");
    if (!file) refuse_json(R"(it has no "file" that is a text)");
    const auto titles = json.find("titles");
    if (titles == json.end() || !titles->is_array()) refuse_json(R"("titles" is no list)");
    reader.set.file = read_title(*file);
    std::size_t number = 0;
    for (const nlohmann::json &title : *titles) {
        read_json_title(title, "title " + std::to_string(++number), reader);
    }
}

void read_table(std::string_view text, char comma, Reader &reader) {
    std::string last_path, file;
    bool kept = false, first_row_empty = false, named = false;
    const std::vector<TableRow> rows = rows_of(text, comma);
    for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
        const std::string place = line_number(row->line);
        if (row->cells.size() == 1 && row->cells.front().empty()) continue;
        if (row->cells.size() != 3) {
            reader.leave_out(place, "the row does not have three columns");
            continue;
        }
        const std::string &path = row->cells[1], &symbols = row->cells[2];
        if (!std::exchange(named, true)) {
            file = row->cells[0];
            reader.set.file = read_title(file);
        }
        if (row->cells[0] != file) {
            reader.leave_out(place, "it is a row of " + shortened(row->cells[0]) + ", not of " +
                                        shortened(file));
            continue;
        }
        if (path.empty()) { // a file without titles has one such row
            if (!symbols.empty()) reader.leave_out(place, "symbols without a path");
            continue;
        }
        const bool begins = path != std::exchange(last_path, path);
        if (begins) kept = reader.begin_block(path, place);
        // A first row without symbols is that of an empty title, unless more rows follow.
        if (kept && first_row_empty && !begins) reader.add_line("", place);
        first_row_empty = begins && symbols.empty();
        if (!kept || first_row_empty) continue;
        if (symbols.empty()) reader.add_line("", place);
        for (const std::string &line : lines_of(symbols)) reader.add_line(line, place);
    }
}

/** What a person may have meant, and what stands where no title has it. */
void report_damage(Bytes bytes, Reader &reader) {
    static const std::set<std::string> harm{"unterminated", "outside_titles", "nul",
                                            "cr",           "encoding",       "off_grid"};
    for (const Finding &finding : check_symbol_file(Sjis(bytes.begin(), bytes.end())).findings) {
        if (harm.contains(finding.kind)) {
            reader.leave_out(line_number(finding.line), finding.text);
        }
    }
}

void read_symbol_file(Bytes bytes, Reader &reader) {
    const Sjis text = text_form(bytes);
    acc::Range title;
    if (!acc::has_symbol_header(text) ||
        !acc::find_file_title(text, static_cast<std::uint32_t>(text.size() + 6), title)) {
        throw Failure(FailureKind::refused,
                      "it is no symbol file: 〈記号〉 and a line 名称= must stand first");
    }
    const auto part = [&](std::size_t offset, std::size_t length) {
        const auto begin = text.begin() + static_cast<std::ptrdiff_t>(offset);
        return Sjis(begin, begin + static_cast<std::ptrdiff_t>(length));
    };
    reader.set.file = part(title.offset, title.length);
    acc::BlockWalk walk(text, title);
    acc::Block block{};
    std::size_t line = 1, counted_to = 0;
    while (walk.next(block)) {
        const auto from = text.begin() + static_cast<std::ptrdiff_t>(counted_to);
        const auto to = text.begin() + static_cast<std::ptrdiff_t>(block.title_line);
        line += static_cast<std::size_t>(std::count(from, to, '\n'));
        counted_to = block.title_line;
        Sjis data = part(block.data, 2 * std::size_t{block.data_units});
        if (data.size() >= 2 && data.back() != '\n') data.insert(data.end(), {'\r', '\n'});
        reader.set.blocks.push_back(
            {part(block.path.offset, block.path.length), std::move(data), line_number(line)});
    }
}

/** The format of text that begins like one; nothing for any other text. */
std::optional<Format> format_of_text(std::string_view text) {
    if (text.starts_with(head)) return Format::text;
    if (text.starts_with("file\tpath\tsymbols")) return Format::tsv;
    std::string first(text.substr(0, text.find('\n')));
    std::erase_if(first, [](char sign) { return sign == '"' || sign == '\r'; });
    if (first == "file,path,symbols") return Format::csv;
    const auto start = text.find_first_not_of(" \t\r\n");
    if (start != std::string_view::npos && text[start] == '{') return Format::json;
    return std::nullopt;
}

} // namespace

std::optional<Format> format_of(Bytes bytes) {
    static constexpr std::size_t looked_at = 4096;
    const Bytes start = bytes.first(std::min(bytes.size(), looked_at));
    if (acc::has_symbol_header(text_form(start))) return Format::kig;
    return format_of_text(utf8_of_file(start));
}

SymbolSet read_set(Bytes bytes, Format format, LeftOutList &left_out) {
    Reader reader(left_out);
    if (format == Format::kig) {
        read_symbol_file(bytes, reader);
        report_damage(bytes, reader);
        return std::move(reader.set);
    }
    const std::string text = utf8_of_file(bytes);
    if (format == Format::json) {
        read_json(text, reader);
        return std::move(reader.set);
    }
    if (format_of_text(text) != format) {
        throw Failure(FailureKind::refused, "the text does not begin as an export does");
    }
    if (format == Format::text) {
        read_text(lines_of(text), reader);
    } else {
        read_table(text, format == Format::tsv ? '\t' : ',', reader);
    }
    return std::move(reader.set);
}

} // namespace kigou
