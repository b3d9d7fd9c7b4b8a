/*
 * sjis_reference.h - the double-byte codes of Shift_JIS by counting them: 188 valid trail
 * bytes of each lead byte are two rows of 94 cells. Slow, and shares nothing with the
 * library.
 */
#ifndef ACCSYM_TESTS_COMMON_SJIS_REFERENCE_H
#define ACCSYM_TESTS_COMMON_SJIS_REFERENCE_H

#include <array>
#include <map>
#include <utility>
#include <vector>

struct SjisReference {
    /** Row and cell, both from 0, of every code with valid bytes, and the other way. */
    std::map<int, std::pair<int, int>> cells;
    std::map<std::pair<int, int>, int> codes;

    SjisReference() {
        int count = 0;
        for (int lead = 0x81; lead <= 0xFC; ++lead) {
            if (lead >= 0xA0 && lead <= 0xDF) continue;
            for (int trail = 0x40; trail <= 0xFC; ++trail) {
                if (trail == 0x7F) continue;
                const std::pair<int, int> cell(count / 94, count % 94);
                cells[lead * 256 + trail] = cell;
                codes[cell] = lead * 256 + trail;
                ++count;
            }
        }
    }

    /** Also for invalid trail bytes, whose cells lie before, between and behind the valid. */
    std::pair<int, int> cell_of(int lead, int trail) const {
        if (trail == 0x7F) return cells.at(lead * 256 + 0x80);
        const int valid = trail < 0x40 ? 0x40 : trail > 0xFC ? 0xFC : trail;
        std::pair<int, int> cell = cells.at(lead * 256 + valid);
        cell.second += trail - valid;
        return cell;
    }

    /** Also for cells before and behind the 94 of a row. */
    int code_of(int row, int cell) const {
        const int valid = cell < 0 ? 0 : cell > 93 ? 93 : cell;
        return codes.at({row, valid}) + cell - valid;
    }
};

inline const SjisReference &sjis_reference() {
    static const SjisReference reference;
    return reference;
}

#endif
