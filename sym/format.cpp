#include "sym/format.h"

#include <cstring>

#include "common/sjis_text.h"

namespace acc {
namespace {

constexpr auto opening_bracket = sjis<"［">();
constexpr auto closing_bracket = sjis<"］">();

template <typename Literal>
bool stands_at(Text text, std::uint32_t pos, const Literal &literal) {
    return text.size() - pos >= literal.size() &&
           std::memcmp(text.data() + pos, literal.data(), literal.size()) == 0;
}

std::uint32_t length_of(Text text) {
    return static_cast<std::uint32_t>(text.size());
}

constexpr bool is_trail(unsigned char byte) {
    return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

/** Bytes of the character at pos: 2 for a lead byte with a trail byte behind it. */
std::uint32_t character_bytes(Text text, std::uint32_t pos) {
    return is_lead(text[pos]) && pos + 1 < length_of(text) && is_trail(text[pos + 1]) ? 2 : 1;
}

std::uint32_t run_length_at(Text text, std::uint32_t pos) {
    std::uint32_t end = pos;
    while (end < length_of(text) && text[end] == '-') ++end;
    return end - pos;
}

/** Finds the next run of 40 hyphens or more. @return false when the text ends first */
bool find_hyphen_line(Text text, std::uint32_t pos, Range &run) {
    while (pos < length_of(text)) {
        const void *hyphen = std::memchr(text.data() + pos, '-', text.size() - pos);
        if (!hyphen) return false;
        pos = static_cast<std::uint32_t>(static_cast<const unsigned char *>(hyphen) - text.data());
        const std::uint32_t length = run_length_at(text, pos);
        if (length >= hyphen_line) {
            run = {pos, length};
            return true;
        }
        pos += length;
    }
    return false;
}

/** Bytes behind a run that belong to its line: the two of its CR LF, fewer at the text's end. */
std::uint32_t line_end_bytes(Text text, Range run) {
    const std::uint32_t rest = length_of(text) - run.offset - run.length;
    return rest < 2 ? rest : 2;
}

} // namespace

bool has_symbol_header(Text text) {
    return stands_at(text, 0, m_ucSymHeader);
}

bool find_file_title(Text text, std::uint32_t limit, Range &title) {
    for (std::uint32_t i = 0; i + 5 < limit && i + 5 <= length_of(text); ++i) {
        if (!stands_at(text, i, m_ucSymNameHeader)) continue;
        const std::uint32_t begin = i + 5;
        std::uint32_t end = begin;
        while (end < length_of(text) && text[end] != '\r' &&
               !(end + 1 < length_of(text) && text[end + 1] == '\n')) {
            ++end;
        }
        title = {begin, end - begin};
        return true;
    }
    return false;
}

std::uint32_t SymHaifunSkipProc(Text text, std::uint32_t pos, HyphenMode mode) {
    if (pos >= length_of(text)) return 0;
    if (mode == HyphenMode::run_length) return run_length_at(text, pos);
    Range run;
    if (!find_hyphen_line(text, pos, run)) return length_of(text) - pos;
    return run.offset + run.length + line_end_bytes(text, run) - pos;
}

BlockWalk::BlockWalk(Text text, Range title) : text_(text), pos_(title.offset + title.length) {
    while (pos_ < length_of(text_) && !stands_at(text_, pos_, m_ucSymReturn)) ++pos_;
    pos_ = pos_ + 2 < length_of(text_) ? pos_ + 2 : length_of(text_);
}

bool BlockWalk::next(Block &block) {
    while (find_title_line()) {
        block.title_line = pos_;
        if (!read_title_line(block)) continue; // the text ended within the line
        read_start_line(block);
        read_data(block);
        return true;
    }
    return false;
}

/** Moves to the first bracket of the text, or to the next line that holds one. */
bool BlockWalk::find_title_line() {
    std::uint32_t line = pos_;
    for (std::uint32_t at = pos_; at < length_of(text_); at += character_bytes(text_, at)) {
        if (stands_at(text_, at, opening_bracket)) {
            pos_ = first_ ? at : line;
            first_ = false;
            return true;
        }
        if (stands_at(text_, at, m_ucSymReturn)) line = at + 2;
    }
    pos_ = length_of(text_);
    return false;
}

/** Reads up to the line's CR LF. @return false when the text ends without one */
bool BlockWalk::read_title_line(Block &block) {
    block.level = 2;
    bool inside = false;
    std::uint32_t at = pos_;
    while (at < length_of(text_)) {
        if (inside && stands_at(text_, at, closing_bracket)) {
            block.path.length = at - block.path.offset;
            block.title.length = at - block.title.offset;
            inside = false;
        } else if (inside && stands_at(text_, at, m_ucSymKugiri)) {
            block.title.offset = at + 2;
            if (block.level < UINT16_MAX) ++block.level;
        } else if (!inside && stands_at(text_, at, opening_bracket)) {
            block.path.offset = block.title.offset = at + 2;
            inside = true;
        } else if (!inside && stands_at(text_, at, m_ucSymReturn)) {
            pos_ = at + 2;
            return true;
        }
        at += character_bytes(text_, at);
    }
    pos_ = at;
    return false;
}

/** Offset behind a hyphen line. */
std::uint32_t BlockWalk::behind_line(Range run, Block &block) const {
    const std::uint32_t line_end = line_end_bytes(text_, run);
    block.missing = 2 - line_end;
    return run.offset + run.length + line_end;
}

/** Finds the start line, and with it the data. */
void BlockWalk::read_start_line(Block &block) {
    Range run;
    if (!find_hyphen_line(text_, pos_, run)) {
        block.cut = Cut::before_start_line;
        block.data = length_of(text_);
        block.missing = 0;
        return;
    }
    block.data = behind_line(run, block);
    block.cut = block.missing == 0 ? Cut::in_data : Cut::in_start_line; // unless there is more
}

/** Reads the data, and on to behind the end line. */
void BlockWalk::read_data(Block &block) {
    block.data_units = block.symbols = 0;
    for (std::uint32_t at = block.data; at + 2 <= length_of(text_); at += 2) {
        const std::uint32_t hyphens = text_[at] == '-' ? run_length_at(text_, at) : 0;
        if (hyphens >= hyphen_line) {
            block.end = pos_ = behind_line({at, hyphens}, block);
            block.cut = block.missing == 0 ? Cut::nowhere : Cut::in_end_line;
            return;
        }
        ++block.data_units;
        if (!stands_at(text_, at, m_ucSymReturn)) ++block.symbols;
    }
    block.end = pos_ = length_of(text_);
}

namespace {

bool has_bracket(Text text, std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t at = from; at < to; at += character_bytes(text, at)) {
        if (stands_at(text, at, opening_bracket)) return true;
    }
    return false;
}

} // namespace

bool has_stray_title(Text text, Range title) {
    BlockWalk walk(text, title);
    Block block;
    std::uint32_t end = title.offset + title.length;
    while (walk.next(block)) {
        if (has_bracket(text, end, block.title_line) ||
            has_bracket(text, block.path.offset + block.path.length, block.data)) {
            return true;
        }
        // The two bytes of the end line's end need not be that: half a bracket may be one.
        end = block.cut == Cut::nowhere ? block.end - 2 : block.end;
    }
    return has_bracket(text, end, length_of(text));
}

namespace {

template <typename Bytes>
void add(Closing &closing, const Bytes &bytes, std::size_t from = 0) {
    for (std::size_t i = from; i < bytes.size(); ++i) {
        closing.bytes[closing.length++] = bytes.data()[i];
    }
}

} // namespace

Closing closing_of(Text text, Range title, const Block *last) {
    Closing closing;
    const std::uint32_t length = length_of(text);
    if (!last) {
        const std::uint32_t end = title.offset + title.length;
        for (std::uint32_t at = end; at + 2 <= length; ++at) {
            if (stands_at(text, at, m_ucSymReturn)) return closing;
        }
        add(closing, m_ucSymReturn);
        return closing;
    }
    switch (last->cut) {
        case Cut::nowhere:
            return closing;
        case Cut::in_end_line:
            add(closing, m_ucSymReturn, 2 - last->missing);
            return closing;
        case Cut::in_data:
            if ((length - last->data) % 2 != 0) {
                closing.bytes[closing.length++] = ' ';
                ++closing.units;
                ++closing.symbols;
            }
            if (length > last->data && text[length - 1] == '-') {
                add(closing, m_ucSymReturn);
                ++closing.units;
            }
            break;
        case Cut::in_start_line:
            add(closing, m_ucSymReturn, 2 - last->missing);
            closing.data_shift = closing.length;
            break;
        case Cut::before_start_line:
            if (text[length - 1] != '\n') add(closing, m_ucSymReturn);
            add(closing, m_ucSymHaihun);
            add(closing, m_ucSymReturn);
            closing.data_shift = closing.length;
            break;
    }
    add(closing, m_ucSymHaihun);
    add(closing, m_ucSymReturn);
    return closing;
}

} // namespace acc
