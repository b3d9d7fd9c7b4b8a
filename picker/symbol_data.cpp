// symbol_data.cpp - see symbol_data.h.
#include "picker/symbol_data.h"

#include <algorithm>
#include <set>

#include "picker/disk_form.h"
#include "picker/sentence.h"
#include "picker/set_text.h"

namespace kigou {
namespace {

constexpr std::size_t symbols_per_line = 10;

} // namespace

std::vector<Sjis> symbols_in(std::span<const unsigned char> data) {
    std::vector<Sjis> symbols;
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        if (data[i] == '\r' && data[i + 1] == '\n') continue;
        symbols.push_back({data[i], data[i + 1]});
    }
    return symbols;
}

void append_lines(Sjis &data, const std::vector<Sjis> &symbols) {
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        data.insert(data.end(), symbols[i].begin(), symbols[i].end());
        const bool line_full = (i + 1) % symbols_per_line == 0;
        if (line_full || i + 1 == symbols.size()) data.insert(data.end(), {'\r', '\n'});
    }
}

void append_data(Sjis &data, std::span<const unsigned char> more) {
    const bool ends_a_line = data.size() >= 2 && data.back() == '\n';
    if (!data.empty() && !ends_a_line) data.insert(data.end(), {'\r', '\n'});
    data.insert(data.end(), more.begin(), more.end());
}

std::vector<Sjis> missing_from(std::span<const unsigned char> data,
                               const std::vector<Sjis> &symbols) {
    const std::vector<Sjis> held = symbols_in(data);
    std::set<Sjis> seen(held.begin(), held.end());
    std::vector<Sjis> missing;
    for (const Sjis &symbol : symbols) {
        if (seen.insert(symbol).second) missing.push_back(symbol);
    }
    return missing;
}

std::optional<std::string> data_refusal(std::span<const unsigned char> data) {
    if (data.size() > most_data) {
        return sentence("{1} bytes of at most {2}", std::to_string(data.size()),
                        std::to_string(most_data));
    }
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        const auto ends_a_line = [](unsigned char byte) { return byte == '\r' || byte == '\n'; };
        const bool line_end = data[i] == '\r' && data[i + 1] == '\n';
        if (!line_end && (ends_a_line(data[i]) || ends_a_line(data[i + 1]))) {
            return sentence("a line of it has an odd number of bytes");
        }
    }
    if (!survives_saving(data)) return sentence("it holds a character that a file cannot keep");
    if (!reads_back(data)) {
        return sentence("it would be read as the end of the title or out of step");
    }
    return std::nullopt;
}

} // namespace kigou
