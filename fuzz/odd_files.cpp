#include "fuzz/odd_files.h"

#include <algorithm>

#include "common/acccom.h"
#include "common/heap_block.h"

namespace {

using namespace std::string_literals;

const std::string opening = "\xA1\xCE", closing = "\xA1\xCF", separator = "\xA1\xBF";
const std::string header = "\xA1\xD2\xB5\xAD\xB9\xE6\xA1\xD3", name_header = "\xCC\xBE\xBE\xCE=";
const std::string standard_symbols = "\xC9\xB8\xBD\xE0\xA4\xCE\xB5\xAD\xB9\xE6";

// Titles that are the beginning of each other, and such as メ^, メm and メn: the second byte
// of メ and the one behind it are those of ／, ［ and ］ in the text form.
const std::string titles[] = {
    "A",         "AB",        "B",         "b b",       "\xA4\xA2",        "\xCC\xF0\xB0\xF5",
    "\xA5\xE1^", "\xA5\xE1m", "\xA5\xE1n", "\xA5\xBDx", "\x8E\xB1\x8E\xB2"};

// Halves of characters, single bytes that shift the grid, and pieces of the grammar.
const std::string odd_pieces[] = {
    "\x85",     "\xA4", "\x8E",   "\x8F\xA2\xB7", "\x8E\xB1",  "\xFF",     "\x80",     "\xA0",
    "\xFD\xFE", "\r",   "\n",     "\r\n",         "\0"s,       "\x1B",     "\t",       " ",
    "=",        "-",    "\\",     "\x7F",         opening,     closing,    "^",        "m",
    separator,  "%s",   "\x81^",  "\x81m",        "\xA1",      "\x8E\r",   "\x8E\n",   header,
    "\xA4\n",   "\r\r", "\xA4\r", "\x85\n",       name_header, "\x8E\x41", "\xE5\x41", "\xA4-",
    "--",       "---"};

std::string repeated(const std::string &piece, std::size_t bytes) {
    std::string text;
    while (text.size() < bytes) text += piece;
    return text;
}

} // namespace

std::string text_form(const std::string &disk) {
    const acc::HeapBlock<unsigned char> text(
        CM_euc2sjis(reinterpret_cast<const unsigned char *>(disk.c_str())));
    return reinterpret_cast<const char *>(text.get());
}

std::string OddFiles::noise(std::size_t most) {
    std::string bytes(choice_.below(most + 1), 0);
    for (char &byte : bytes) byte = static_cast<char>(choice_.below(256));
    return bytes;
}

std::string OddFiles::file_title() {
    static const std::string usual[] = {"T", "U", "TU", "\xCE\xE3", "\xA5\xE1^"};
    switch (choice_.below(16)) {
        case 0:
            return standard_symbols;
        case 1:
            return "T" + choice_.of(odd_pieces);
        case 2:
            return repeated(choice_.of(titles), 250 + choice_.below(12));
        case 3:
            return "";
        case 4:
            return "T\x85"; // its last byte begins a character in the text form
        default:
            return choice_.of(usual);
    }
}

std::string OddFiles::title() {
    std::string bytes = choice_.of(titles);
    if (choice_.one_in(8)) bytes += std::to_string(choice_.below(100));
    if (odd()) bytes += choice_.of(odd_pieces);
    if (odd() && choice_.one_in(3)) bytes = choice_.of(odd_pieces) + bytes;
    if (odd() && choice_.one_in(6)) bytes = repeated(bytes, 60 + choice_.below(220));
    if (odd() && choice_.one_in(10)) bytes.clear();
    return bytes;
}

/** The path of the next block: depth first, or an orphan's or a twin's. */
std::string OddFiles::next_path() {
    if (!odd()) path_.resize(choice_.below(std::min<std::size_t>(path_.size(), 8) + 1));
    path_.push_back(title());
    if (choice_.one_in(4)) path_.back() += std::to_string(choice_.below(1000)); // hardly a twin
    if (odd() && choice_.one_in(4)) path_.push_back(title());                   // an orphan
    std::string path = path_[0];
    for (std::size_t i = 1; i < path_.size(); ++i) path += separator + path_[i];
    return path;
}

std::string OddFiles::line_end() {
    static const std::string ends[] = {"\r\n", "\r",  "",      "\n\n",  " \n",
                                       "\n\r", "x\n", "\0\n"s, "\r\r\n"};
    return odd() ? choice_.of(ends) : "\n";
}

std::string OddFiles::hyphens() {
    return std::string(odd() ? 38 + choice_.below(8) : 40, '-');
}

/** Double-byte characters, and what is none. */
std::string OddFiles::symbols(std::size_t count) {
    std::string bytes;
    for (; count > 0; --count) {
        if (odd()) {
            bytes += choice_.of(odd_pieces);
        } else {
            bytes += static_cast<char>(0xA1 + choice_.below(84));
            bytes += static_cast<char>(0xA1 + choice_.below(94));
        }
    }
    return bytes;
}

std::string OddFiles::data() {
    if (choice_.one_in(300)) return symbols(9000 + choice_.below(2500)) + line_end();
    std::string bytes;
    for (std::size_t lines = choice_.below(4); lines > 0; --lines) {
        bytes += symbols(1 + choice_.below(6)) + line_end();
    }
    if (odd()) bytes += symbols(1 + choice_.below(3)); // a last line without its end
    if (odd() && choice_.one_in(3)) bytes += std::string(choice_.below(45), '-');
    return bytes;
}

std::string OddFiles::head(const std::string &title) {
    std::string bytes = header;
    if (odd()) bytes += choice_.of(odd_pieces);
    bytes += line_end();
    if (odd() && choice_.one_in(3)) bytes += repeated("remark\n", choice_.below(1100));
    bytes += name_header + title + line_end();
    if (odd()) bytes += "remark" + line_end();
    return bytes;
}

std::string OddFiles::block() {
    const std::string remark = "remark" + line_end();
    std::string bytes = odd() ? remark : "";
    if (odd()) bytes += opening + title() + closing; // the last brackets count
    if (!odd() || !choice_.one_in(3)) bytes += opening;
    bytes += next_path();
    if (!odd() || !choice_.one_in(3)) bytes += closing;
    if (odd()) bytes += choice_.of(odd_pieces);
    bytes += line_end();
    if (odd()) bytes += remark;
    if (!odd() || !choice_.one_in(5)) bytes += hyphens() + line_end();
    bytes += data();
    if (!odd() || !choice_.one_in(5)) bytes += hyphens() + line_end();
    return bytes;
}

/** Changes, cuts or doubles a few bytes somewhere. */
void OddFiles::damage(std::string &bytes) {
    const std::size_t at = choice_.below(bytes.size() + 1);
    switch (choice_.below(4)) {
        case 0:
            bytes.insert(at, choice_.of(odd_pieces));
            break;
        case 1:
            bytes.erase(at, 1 + choice_.below(4));
            break;
        case 2:
            bytes.insert(at, bytes.substr(choice_.below(bytes.size() + 1), choice_.below(100)));
            break;
        default:
            bytes.replace(at, at < bytes.size(), noise(2));
    }
}

std::string OddFiles::symbol_file(const std::string &title) {
    static constexpr std::size_t percents[] = {0, 0, 2, 5, 15, 40};
    odd_percent_ = choice_.of(percents);
    path_.clear();
    if (choice_.one_in(40)) return choice_.one_in(2) ? "" : header + noise(100);
    std::string bytes = head(title);
    std::size_t blocks = choice_.one_in(100) ? 200 + choice_.below(500) : choice_.below(8);
    for (; blocks > 0; --blocks) bytes += block();
    while (odd()) damage(bytes);
    if (choice_.one_in(8)) bytes.resize(choice_.below(bytes.size() + 1));
    if (choice_.one_in(8)) bytes.resize(bytes.size() - std::min<std::size_t>(bytes.size(), 1));
    return bytes;
}

std::string OddFiles::old_file() {
    static constexpr std::size_t percents[] = {0, 0, 5, 30};
    odd_percent_ = choice_.of(percents);
    std::string bytes;
    for (std::size_t count = choice_.one_in(20) ? 98 + choice_.below(4) : choice_.below(5);
         count > 0; --count) {
        bytes += text_form(opening + title() + closing) + (odd() ? line_end() : "\r\n");
        for (std::size_t keys = choice_.below(4); keys > 0; --keys) {
            bytes += "sel" + std::to_string(1 + choice_.below(12)) + "=";
            for (std::size_t n = choice_.below(12); n > 0; --n)
                bytes += text_form(symbols(1)) + " ";
            bytes += odd() ? line_end() : "\r\n";
        }
    }
    while (odd()) damage(bytes);
    return bytes;
}

std::string OddFiles::new_title() {
    static constexpr std::size_t percents[] = {0, 0, 0, 30, 80};
    odd_percent_ = choice_.of(percents);
    std::string bytes = title();
    if (!choice_.one_in(8)) bytes = text_form(bytes);
    if (odd()) damage(bytes);
    return bytes;
}

std::string OddFiles::new_data() {
    static constexpr std::size_t percents[] = {0, 0, 0, 5, 30};
    odd_percent_ = choice_.of(percents);
    std::string bytes = data();
    if (!choice_.one_in(8)) bytes = text_form(bytes);
    if (choice_.one_in(10)) { // perhaps an end line, or what makes one longer
        const std::size_t at = choice_.one_in(2) ? bytes.size() : choice_.below(bytes.size() + 1);
        bytes.insert(at, 1 + choice_.below(44), '-');
    }
    if (odd()) damage(bytes);
    return bytes;
}
