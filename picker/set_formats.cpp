// set_formats.cpp - writing sets; see set_formats.h. set_reading.cpp reads them.
#include "picker/set_formats.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <utility>

#include "common/sjis_text.h"

namespace kigou {
namespace {

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
    const std::u32string character = to_characters(to_utf8(symbol));
    return character.size() == 1 && sjis_of(character.front()) == symbol;
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

std::string write_text(const SymbolSet &set) {
    const std::string rule = std::string(hyphens, '-') + "\n";
    std::string text = "〈記号〉\n名称=" + written_title(set.file) + "\n";
    for (const SetBlock &block : set.blocks) {
        text += "［" + written_title(block.path) + "］\n" + rule;
        for (const Sjis &line : lines_of_data(block.data)) text += written_symbols(line) + "\n";
        text += rule;
    }
    return text;
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

std::string write_tsv(const SymbolSet &set) {
    const std::string file = written_title(set.file);
    std::string text = "file\tpath\tsymbols\n";
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

} // namespace

SymbolSet set_of(const Snapshot &snapshot) {
    const auto file = snapshot.path_of(0);
    SymbolSet set{Sjis(file.begin(), file.end()), {}};
    for (std::size_t i = 1; i < snapshot.size(); ++i) {
        const auto path = snapshot.path_of(i).subspan(file.size() + 2);
        const auto data = snapshot.data(i);
        set.blocks.push_back({Sjis(path.begin(), path.end()), Sjis(data.begin(), data.end())});
    }
    return set;
}

std::vector<Sjis> lines_of_data(std::span<const unsigned char> data) {
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

std::string written_symbols(std::span<const unsigned char> line) {
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

std::string write_set(const SymbolSet &set, Format format) {
    if (format == Format::json) return write_json(set);
    if (format == Format::tsv) return write_tsv(set);
    return write_text(set);
}

} // namespace kigou
