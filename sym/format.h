// The symbol file format, read from memory: the head, and a walk over the blocks.
//
// Everything here works on the text form (Shift_JIS, CR LF) as a span of bytes, keeps no
// state, takes no memory and never fails: bytes that fit nothing are passed over. What a
// file may look like is told in docs/file-format.md.
#ifndef ACCSYM_SYM_FORMAT_H
#define ACCSYM_SYM_FORMAT_H

#include <array>
#include <cstdint>
#include <span>

#include "common/sjis_literal.h"

namespace acc {

inline constexpr auto m_ucSymHeader = sjis<"〈記号〉">();
inline constexpr auto m_ucSymNameHeader = sjis<"名称=">();
inline constexpr auto m_ucSymTitleKakko = sjis<"［%s］\r\n">();
inline constexpr auto m_ucSymKugiri = sjis<"／">();
inline constexpr unsigned short separator = 0x815E; // the same as a code
inline constexpr auto m_ucSymHaihun = sjis<"----------------------------------------">();
inline constexpr auto m_ucSymReturn = sjis<"\r\n">();
inline constexpr auto m_ucSymDefault = sjis<"標準の記号">();

/** Offset of the file title in a file that the library wrote. */
inline constexpr std::uint32_t title_offset_as_written = static_cast<std::uint32_t>(
    m_ucSymHeader.size() + m_ucSymReturn.size() + m_ucSymNameHeader.size());

/** Lengths that the index records can hold, in bytes without the NUL. */
inline constexpr std::uint32_t max_file_title = 255;
inline constexpr std::uint32_t max_title = 256;
inline constexpr std::uint32_t max_path = 514;

/** Hyphens that make a start line or an end line; more are allowed. */
inline constexpr std::uint32_t hyphen_line = 40;

/** Bytes of a hyphen line as the library writes it. */
inline constexpr std::uint32_t hyphen_line_bytes =
    static_cast<std::uint32_t>(m_ucSymHaihun.size() + m_ucSymReturn.size());

using Text = std::span<const unsigned char>;

/** A run of bytes within a text. */
struct Range {
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
};

/** True when the text begins with the header line's characters. */
bool has_symbol_header(Text text);

/**
 * Finds the file title: what follows the first name header.
 *
 * @param limit  the name header must begin before limit - 5
 * @param title  on success the title's place, up to the first CR and before a byte that
 *               is followed by LF
 * @return       false when there is no name header
 */
bool find_file_title(Text text, std::uint32_t limit, Range &title);

/** What SymHaifunSkipProc measures. */
enum class HyphenMode : unsigned short {
    skip_line = 2,  // past the next run of 40 or more and the two bytes after it
    run_length = 3, // of the run that begins here
};

/**
 * Measures hyphen runs.
 * @return distance from pos in bytes, never past the text's end
 */
std::uint32_t SymHaifunSkipProc(Text text, std::uint32_t pos, HyphenMode mode);

/** Where in its last block a text stops. */
enum class Cut {
    nowhere,           // the block is whole
    in_end_line,       // the end line lacks its line end, or half of it
    in_data,           // the end line is missing
    in_start_line,     // the start line lacks its line end, or half of it
    before_start_line, // there is a title line alone
};

/** One block as it stands in the text. */
struct Block {
    std::uint32_t title_line; // offset of its title line
    Range path;               // what the title line's last brackets hold
    Range title;              // the last component of that path
    std::uint16_t level;      // 2 for a top-level title
    std::uint32_t data;       // offset of its first data byte
    std::uint32_t data_units; // 2-byte units of data, CR LF included
    std::uint32_t symbols;    // units that are not CR LF
    std::uint32_t end;        // offset behind its end line
    Cut cut;
    std::uint32_t missing; // bytes that its last hyphen line lacks of its line end
};

/**
 * Walks over the blocks of a text, in order.
 *
 * The walk begins behind the name line. Lines between blocks that hold no opening
 * bracket are passed over. Brackets and separators are looked for character by
 * character, so the second byte of a character is never taken for one.
 */
class BlockWalk {
  public:
    /** @param title  the file title as find_file_title gave it */
    BlockWalk(Text text, Range title);

    /** The next block. @return false at the end of the text */
    bool next(Block &block);

  private:
    bool find_title_line();
    bool read_title_line(Block &block);
    void read_start_line(Block &block);
    void read_data(Block &block);
    std::uint32_t behind_line(Range run, Block &block) const;

    Text text_;
    std::uint32_t pos_;
    bool first_ = true;
};

/**
 * Whether an opening bracket stands outside of title lines and data: a title that a person
 * may have meant though the walk finds no block there, as one without a closing bracket.
 */
bool has_stray_title(Text text, Range title);

/**
 * What a text lacks at its end so that something can be appended: the end of the name
 * line, or the rest of a last block that is cut short.
 */
struct Closing {
    std::array<unsigned char, 96> bytes{};
    std::uint32_t length = 0;
    std::uint32_t units = 0;      // 2-byte units among the bytes that become data of the last block
    std::uint32_t symbols = 0;    // those of them that are not CR LF
    std::uint32_t data_shift = 0; // bytes of the closing that stand before the last block's data
};

/** @param last  the text's last block, or null when it has none */
Closing closing_of(Text text, Range title, const Block *last);

} // namespace acc

#endif
