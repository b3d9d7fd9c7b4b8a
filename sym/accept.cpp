#include "sym/accept.h"

#include <cstring>

#include "common/acccom.h"
#include "common/heap_block.h"
#include "common/sjis_text.h"
#include "sym/format.h"

namespace acc {
namespace {

constexpr unsigned short brackets[] = {0x816D, 0x816E}; // "［" and "］"

bool has_control_character(const unsigned char *text) {
    for (; *text; ++text) { // no second byte of a character is in these ranges
        if (*text < 0x20 || *text == 0x7F) return true;
    }
    return false;
}

/** Whether the lines of a block's data fit the 2-byte grid. */
bool fits_the_grid(Text data) {
    std::size_t at = 0;
    while (at + 1 < data.size()) {
        const bool line_end = data[at] == '\r' && data[at + 1] == '\n';
        const bool stray =
            data[at] == '\r' || data[at] == '\n' || data[at + 1] == '\r' || data[at + 1] == '\n';
        if (stray && !line_end) return false;
        at += 2;
    }
    return at == data.size();
}

/** Whether hyphens of the data would be taken for an end line, or would lengthen it. */
bool hides_an_end_line(Text data) {
    std::uint32_t at = 0;
    while (at < data.size()) {
        const std::uint32_t run = SymHaifunSkipProc(data, at, HyphenMode::run_length);
        if (run >= hyphen_line || (run >= 2 && at + run == data.size())) return true;
        at += run >= 2 ? run / 2 * 2 : 2;
    }
    return false;
}

} // namespace

int refuse(Accdata *record, Verdict verdict) {
    return fail(record,
                verdict == Verdict::no_memory ? Message::out_of_memory : Message::input_error);
}

Verdict survives_the_disk(const unsigned char *text) {
    const HeapBlock<unsigned char> disk(CM_sjis2euc(text));
    const HeapBlock<unsigned char> again(disk ? CM_euc2sjis(disk.get()) : nullptr);
    if (!again) return Verdict::no_memory;
    return std::strcmp(reinterpret_cast<const char *>(text),
                       reinterpret_cast<const char *>(again.get())) == 0
               ? Verdict::accepted
               : Verdict::refused;
}

Verdict accept_title(const unsigned char *title, std::uint32_t max_bytes) {
    const auto bytes = static_cast<std::uint32_t>(CM_lstrlen(title));
    if (bytes == 0 || bytes > max_bytes || has_control_character(title) ||
        find_char(title, separator) || find_char(title, brackets[0]) ||
        find_char(title, brackets[1])) {
        return Verdict::refused;
    }
    return survives_the_disk(title);
}

Verdict accept_data(const unsigned char *data) {
    const Text text(data, static_cast<std::size_t>(CM_lstrlen(data)));
    if (text.size() > max_data || !fits_the_grid(text) || hides_an_end_line(text)) {
        return Verdict::refused;
    }
    return survives_the_disk(data);
}

} // namespace acc
