// encoding.cpp - see encoding.h.
#include "picker/encoding.h"

#include <algorithm>

#include "picker/codes.h"
#include "picker/disk_form.h"
#include "picker/failure.h"

namespace kigou {
namespace {

constexpr std::size_t most_told = 1000; // lines

// Of EUC-JP: what begins two bytes of half-width katakana and three of JIS X 0212.
constexpr unsigned char half_width_shift = 0x8E, supplement_shift = 0x8F;

std::string euc_text(std::span<const unsigned char> bytes) {
    std::string utf8;
    std::size_t begin = 0;
    const auto end_part = [&](std::size_t end) {
        utf8 += to_utf8(text_form(bytes.subspan(begin, end - begin)));
    };
    for (std::size_t i = 0; i < bytes.size();) {
        if (bytes[i] == supplement_shift) { // or its last two would be taken for another
            end_part(i);
            utf8 += to_utf8(replacement_character);
            i = std::min(i + 3, bytes.size());
            begin = i;
        } else {
            i += bytes[i] < 0x80 || i + 1 == bytes.size() ? 1 : 2;
        }
    }
    end_part(bytes.size());
    return utf8;
}

std::string in_braces(char32_t character) {
    const auto sjis = sjis_of(character);
    return "{" + (sjis ? codes_of(*sjis).sjis : unicode_names(to_utf8(character))) + "}";
}

} // namespace

const std::vector<std::string> &encoding_names() {
    static const std::vector<std::string> names{"UTF-8", "EUC-JP", "Shift_JIS"};
    return names;
}

const std::string &name_of(Encoding encoding) {
    return encoding_names()[static_cast<std::size_t>(encoding)];
}

Encoding encoding_named(std::string_view name) {
    return static_cast<Encoding>(std::ranges::find(encoding_names(), name) -
                                 encoding_names().begin());
}

std::optional<std::string> encoded(char32_t character, Encoding encoding) {
    if (encoding == Encoding::utf_8 || character < 0x80) return to_utf8(character);
    auto bytes = sjis_of(character);
    if (!bytes) return std::nullopt;
    if (encoding == Encoding::euc_jp) {
        if (bytes->size() == 1) {
            bytes->insert(bytes->begin(), half_width_shift);
        } else if (repertoire_of(*bytes) == Repertoire::jis_x_0208) {
            bytes = disk_form(*bytes);
        } else {
            return std::nullopt;
        }
    }
    return std::string(bytes->begin(), bytes->end());
}

std::optional<std::string> encoded(std::string_view utf8, Encoding encoding) {
    std::string bytes;
    for (const char32_t character : to_characters(utf8)) {
        const auto one = encoded(character, encoding);
        if (!one) return std::nullopt;
        bytes += *one;
    }
    return bytes;
}

std::string decoded(std::span<const unsigned char> bytes, Encoding encoding) {
    if (encoding == Encoding::utf_8) return utf8_of_file(bytes);
    if (const auto nul = std::ranges::find(bytes, 0); nul != bytes.end()) {
        throw Failure(FailureKind::refused,
                      "it is no text in " + name_of(encoding) + ": line " +
                          std::to_string(1 + std::count(bytes.begin(), nul, '\n')) +
                          " has a byte 0");
    }
    return encoding == Encoding::euc_jp ? euc_text(bytes) : to_utf8(bytes);
}

std::string TextEncoder::encode(std::string_view utf8) {
    if (encoding_ == Encoding::utf_8) return std::string(utf8);
    std::string bytes;
    for (const char32_t character : to_characters(utf8)) {
        if (character == U'\n') ++line_;
        if (const auto one = encoded(character, encoding_)) {
            bytes += *one;
            continue;
        }
        if (lacking_.size() < most_told || lacking_.contains(line_)) {
            lacking_[line_] += to_utf8(character);
        }
        bytes += in_braces(character);
    }
    return bytes;
}

} // namespace kigou
