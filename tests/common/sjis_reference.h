/*
 * sjis_reference.h - the double-byte codes of Shift_JIS by counting them: 188 valid trail
 * bytes of each lead byte are two rows of 94 cells. Slow, and shares nothing with the
 * library.
 */
#ifndef ACCSYM_TESTS_COMMON_SJIS_REFERENCE_H
#define ACCSYM_TESTS_COMMON_SJIS_REFERENCE_H

#include <algorithm>
#include <map>
#include <utility>

struct SjisReference {
    /** Row and cell, both from 0, of every code with valid bytes, and the other way. */
    std::map<int, std::pair<int, int>> cells;
    std::map<std::pair<int, int>, int> codes;

    SjisReference() {
        int count = 0;
        for (int code = 0x8140; code <= 0xFCFC; ++code) {
            const int lead = code / 256;
            const int trail = code % 256;
            if ((lead >= 0xA0 && lead <= 0xDF) || trail < 0x40 || trail == 0x7F || trail > 0xFC) continue;
            cells[code] = {count / 94, count % 94};
            codes[cells[code]] = code;
            ++count;
        }
    }

    /** Also for invalid trail bytes, whose cells lie before, between and behind the valid. */
    std::pair<int, int> cell_of(int lead, int trail) const {
        if (trail == 0x7F) return cells.at(lead * 256 + 0x80);
        const int valid = std::clamp(trail, 0x40, 0xFC);
        const auto [row, cell] = cells.at(lead * 256 + valid);
        return {row, cell + trail - valid};
    }

    /** Also for cells before and behind the 94 of a row. */
    int code_of(int row, int cell) const {
        const int valid = std::clamp(cell, 0, 93);
        return codes.at({row, valid}) + cell - valid;
    }
};

inline const SjisReference &sjis_reference() {
    static const SjisReference reference;
    return reference;
}

#endif
