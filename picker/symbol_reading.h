// symbol_reading.h - symbols as people type them, made into the data of a block.
#ifndef KIGOU_PICKER_SYMBOL_READING_H
#define KIGOU_PICKER_SYMBOL_READING_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "picker/text.h"

namespace kigou {

enum class Reading {
    plain,  /**< every character must be a symbol */
    folded, /**< single-byte letters, digits, signs and half-width katakana become double-byte */
    escaped /**< {8540} is the symbol with that code, as exports write what is no character */
};

/** Something that was given and is not taken. */
struct LeftOut {
    std::string place;  /**< "line 3, column 2" */
    std::string reason; /**< why, for people */
};

/** All that was left out: counted, and the first ones kept, so that no input fills the memory. */
class LeftOutList {
  public:
    /** Whether one more would be kept; else its place and reason need not be made. */
    bool is_kept() const { return first_.size() < most_kept; }
    void add(std::string place, std::string reason);
    void count_one() { ++count_; }

    std::size_t count() const { return count_; }
    const std::vector<LeftOut> &first() const { return first_; }

    static constexpr std::size_t most_kept = 1000;

  private:
    std::size_t count_ = 0;
    std::vector<LeftOut> first_;
};

/**
 * Symbols of one line. Blanks and tabs separate; the ideographic space is a symbol.
 *
 * @param place    of the line; ", column N" is added, counted in characters from 1
 * @param skipped  characters of the line that stand before this text
 */
std::vector<Sjis> read_symbols(std::string_view utf8, Reading reading, const std::string &place,
                               LeftOutList &left_out, std::size_t skipped = 0);

/**
 * The symbols that an argument names: each of its characters, or the one of its code (see
 * symbol_of_code), whether a file can keep them or not. @throws Failure (refused)
 */
std::vector<Sjis> symbols_named(const std::string &argument);

/**
 * The symbols for one title, taken in pieces. Every refusal is counted; more symbols than a
 * title can hold end it at once.
 */
class TypedSymbols {
  public:
    /** @param reading  plain or folded */
    explicit TypedSymbols(Reading reading) : reading_(reading) {}

    /** A word of a command: characters, or (unless folded) one code; ten symbols a line. */
    void add_word(const std::string &word, const std::string &place);

    /** A piece of a text, cut anywhere; its lines stay lines, so that an arrangement is kept. */
    void add_text(std::string_view piece);

    /**
     * @return lines of symbols, CR LF behind each
     * @throws Failure (refused) when characters were refused
     */
    Sjis finish();

  private:
    void add_line(std::string_view line, bool ends);
    void grow(const std::vector<Sjis> &symbols);

    Reading reading_;
    LeftOutList refused_;
    std::vector<Sjis> words_;
    Sjis data_;
    std::string rest_; /**< of the text, not yet read */
    std::size_t line_ = 1, column_ = 0, bytes_ = 0;
    bool line_has_symbols_ = false;
};

/** Lines of a text, without LF or CR LF. */
std::vector<std::string> lines_of(std::string_view text);

} // namespace kigou

#endif
