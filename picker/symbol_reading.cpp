// symbol_reading.cpp - see symbol_reading.h.
#include "picker/symbol_reading.h"

#include <algorithm>
#include <optional>

#include "picker/codes.h"
#include "picker/disk_form.h"
#include "picker/double_byte.h"
#include "picker/failure.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

constexpr std::size_t refusals_told = 20;
constexpr std::size_t longest_piece = 65536; // of a line that is read at once
constexpr std::size_t most_input = 64 << 20; // bytes of text

std::string code_of(char32_t character) {
    return unicode_names(to_utf8(character));
}

/** The symbol of a character; nothing for one that cannot be one. */
std::optional<Sjis> symbol_of(char32_t character) {
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    if (control || character == replacement_character) return std::nullopt;
    auto sjis = sjis_of(character);
    if (!sjis || sjis->size() != 2 || !survives_saving(*sjis)) return std::nullopt;
    return sjis;
}

/** Why a character is no symbol. */
std::string refusal(char32_t character) {
    if (character == replacement_character) return "no character of the text's encoding";
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    if (control) return code_of(character) + " is a control character";
    const std::string named = "'" + to_utf8(character) + "' (" + code_of(character) + ")";
    const auto sjis = sjis_of(character);
    if (!sjis) return named + " is not in Shift_JIS";
    if (sjis->size() != 2) {
        return named + " is a single-byte character; its double-byte form is " +
               to_utf8(double_byte_form(character));
    }
    return named + " is a vendor character that a file cannot keep";
}

/** "{8540}" at a place; steps to its last character. */
std::optional<Sjis> escape_at(const std::u32string &text, std::size_t &at) {
    if (text[at] != U'{' || at + 5 >= text.size() || text[at + 5] != U'}') return std::nullopt;
    std::string digits;
    for (std::size_t i = 1; i <= 4; ++i) {
        digits += text[at + i] < 0x80 ? static_cast<char>(text[at + i]) : '?';
    }
    const auto code = number_of(digits, 16);
    if (!code) return std::nullopt;
    const Sjis pair{static_cast<unsigned char>(*code >> 8),
                    static_cast<unsigned char>(*code & 0xFF)};
    if (!survives_saving(pair)) return std::nullopt;
    at += 5;
    return pair;
}

} // namespace

void LeftOutList::add(std::string place, std::string reason) {
    if (is_kept()) first_.push_back({std::move(place), std::move(reason)});
    count_one();
}

std::vector<Sjis> read_symbols(std::string_view utf8, Reading reading, const std::string &place,
                               LeftOutList &left_out, std::size_t skipped) {
    std::vector<Sjis> symbols;
    const std::u32string text = to_characters(utf8);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == U' ' || text[i] == U'\t') continue;
        const std::size_t column = skipped + i + 1;
        char32_t character = text[i];
        if (reading == Reading::escaped) {
            if (auto unit = escape_at(text, i)) {
                symbols.push_back(std::move(*unit));
                continue;
            }
        }
        if (reading == Reading::folded) {
            const bool half = is_half_width(character);
            character = double_byte_form(character);
            const auto marked =
                half && i + 1 < text.size() ? with_mark(character, text[i + 1]) : std::nullopt;
            if (marked) {
                character = *marked;
                ++i;
            }
        }
        if (auto symbol = symbol_of(character)) {
            symbols.push_back(std::move(*symbol));
        } else if (left_out.is_kept()) {
            left_out.add(place + ", column " + std::to_string(column), refusal(character));
        } else {
            left_out.count_one();
        }
    }
    return symbols;
}

std::vector<Sjis> symbols_named(const std::string &argument) {
    if (argument.empty()) {
        throw Failure(FailureKind::refused, "an empty argument names no symbol");
    }
    const auto code = symbol_of_code(argument);
    std::vector<Sjis> symbols;
    for (const char32_t character : to_characters(code ? to_utf8(*code) : argument)) {
        if (code && code->size() == 2) return {*code};
        const std::string utf8 = to_utf8(character);
        auto symbol = sjis_of(character);
        if (!symbol) to_sjis(argument); // names the place in the argument as typed
        if (!symbol || symbol->size() != 2) {
            std::vector<std::string> details;
            if (character > 0x20 && character < 0x7F) {
                details.push_back("the full-width character is " + to_utf8(character + 0xFEE0));
            }
            throw Failure(FailureKind::refused,
                          "'" + utf8 + "' is a single-byte character; symbols have two bytes",
                          details);
        }
        symbols.push_back(std::move(*symbol));
    }
    return symbols;
}

void TypedSymbols::grow(const std::vector<Sjis> &symbols) {
    for (const Sjis &symbol : symbols) data_.insert(data_.end(), symbol.begin(), symbol.end());
    if (data_.size() + 2 * words_.size() <= most_data) return;
    throw Failure(FailureKind::refused,
                  "these are more symbols than a title can hold: at most " +
                      std::to_string(most_data) + " bytes",
                  {"divide the symbols among several titles"});
}

void TypedSymbols::add_word(const std::string &word, const std::string &place) {
    if (reading_ != Reading::folded) {
        const auto code = symbol_of_code(word);
        if (code && code->size() == 2 && survives_saving(*code)) {
            words_.push_back(*code);
            return grow({});
        }
        if (code) {
            refused_.add(place, refusal(to_characters(to_utf8(*code)).front()));
            return;
        }
    }
    for (Sjis &symbol : read_symbols(word, reading_, place, refused_)) {
        words_.push_back(std::move(symbol));
    }
    grow({});
}

void TypedSymbols::add_text(std::string_view piece) {
    bytes_ += piece.size();
    if (bytes_ > most_input) {
        throw Failure(FailureKind::refused, "the input does not end: more than " +
                                                std::to_string(most_input) +
                                                " bytes cannot be the symbols of a title");
    }
    rest_ += piece;
    std::string_view text = rest_;
    for (auto end = text.find('\n'); end != text.npos; end = text.find('\n')) {
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        add_line(line, true);
        text.remove_prefix(end + 1);
    }
    if (text.size() > longest_piece) {
        // Not between the bytes of a character, and not before a mark that joins the last one.
        std::size_t cut = longest_piece - 16;
        const auto is_middle = [&] {
            return (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80;
        };
        const auto is_mark = [&] {
            const std::string_view next = text.substr(cut, 3);
            return next == "ﾞ" || next == "ﾟ";
        };
        while (cut > 1 && (is_middle() || is_mark())) --cut;
        add_line(text.substr(0, cut), false);
        text.remove_prefix(cut);
    }
    rest_ = std::string(text);
}

void TypedSymbols::add_line(std::string_view line, bool ends) {
    const auto symbols =
        read_symbols(line, reading_, "line " + std::to_string(line_), refused_, column_);
    line_has_symbols_ = line_has_symbols_ || !symbols.empty();
    grow(symbols);
    if (ends && line_has_symbols_) data_.insert(data_.end(), {'\r', '\n'});
    column_ = ends ? 0 : column_ + to_characters(line).size();
    if (!ends) return;
    line_has_symbols_ = false;
    ++line_;
}

Sjis TypedSymbols::finish() {
    if (!rest_.empty() || line_has_symbols_) add_line(std::exchange(rest_, {}), true);
    if (refused_.count() != 0) {
        std::vector<std::string> details;
        bool single_byte = false;
        for (const LeftOut &refusal : refused_.first()) {
            single_byte = single_byte || refusal.reason.find("single-byte") != std::string::npos;
            if (details.size() < refusals_told) {
                details.push_back(refusal.place + ": " + refusal.reason);
            }
        }
        if (refused_.count() > details.size()) {
            details.push_back(std::to_string(refused_.count() - details.size()) +
                              " more are not shown");
        }
        std::vector<Advice> advice;
        if (reading_ != Reading::folded && single_byte) advice.push_back({Remedy::fold});
        throw Failure(FailureKind::refused,
                      std::to_string(refused_.count()) +
                          (refused_.count() == 1 ? " character" : " characters") +
                          " cannot be stored, so nothing is",
                      details, advice);
    }
    append_lines(data_, words_);
    return std::move(data_);
}

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace kigou
