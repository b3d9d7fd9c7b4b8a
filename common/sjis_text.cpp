#include "common/sjis_text.h"

namespace acc {

const unsigned char *find_char(const unsigned char *text, unsigned short pair) {
    while (*text != 0) {
        if (!is_lead(*text)) {
            ++text;
            continue;
        }
        if (text[1] == 0) return nullptr;
        if ((text[0] << 8 | text[1]) == pair) return text;
        text += 2;
    }
    return nullptr;
}

const unsigned char *find_last_char(const unsigned char *text, unsigned short pair) {
    const unsigned char *last = nullptr;
    while ((text = find_char(text, pair)) != nullptr) {
        last = text;
        text += 2;
    }
    return last;
}

} // namespace acc
