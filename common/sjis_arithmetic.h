/*
 * sjis_arithmetic.h - from Shift_JIS bytes to JIS X 0208 row and cell bytes (0x21 to 0x7E
 * for a character) and back.
 */
#ifndef ACCSYM_COMMON_SJIS_ARITHMETIC_H
#define ACCSYM_COMMON_SJIS_ARITHMETIC_H

namespace acc {

/** Row and cell byte; outside 0 to 255 for bytes that are no Shift_JIS character. */
struct JisPair {
    int row;
    int cell;
};

/** Row and cell of a lead and a trail byte. Nothing is checked. */
constexpr JisPair jis_pair(unsigned char lead, unsigned char trail) {
    const int row = 2 * lead - (lead <= 0x9F ? 0xE1 : 0x161);
    if (trail > 0x9E) return {row + 1, trail - 0x7E};
    return {row, trail - (trail <= 0x7F ? 0x1F : 0x20)};
}

/**
 * Shift_JIS code, lead byte in the high half.
 * @param row   0x21 to 0x7E
 * @param cell  0 to 0x7F; outside 0x21 to 0x7E the trail byte is no valid one
 */
constexpr unsigned short sjis_pair(unsigned row, unsigned cell) {
    const unsigned lead = (row + 1) / 2 + (row <= 0x5E ? 0x70 : 0xB0);
    const unsigned trail = row % 2 == 0 ? cell + 0x7E : cell + (cell <= 0x5F ? 0x1F : 0x20);
    return static_cast<unsigned short>(lead << 8 | trail);
}

} // namespace acc

#endif
