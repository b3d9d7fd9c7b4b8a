package jp.co.korm.wospen.symbols;

import java.util.Locale;
import java.util.Objects;
import java.util.Optional;

/**
 * A symbol by its two bytes of Shift_JIS.
 *
 * @param code the first byte in the high half; what a file holds need not be a character
 */
public record Symbol(int code) implements Item {
    /**
     * The symbol of two bytes.
     *
     * @param code the first byte in the high half
     * @throws IllegalArgumentException outside 0 to 0xFFFF
     */
    public Symbol {
        if (code < 0 || code > 0xFFFF) throw new IllegalArgumentException("no two bytes: " + code);
    }

    /**
     * The symbol of one character.
     *
     * @param character one double-byte character
     * @return its symbol
     * @throws UnencodableTextException for a character that Shift_JIS lacks
     * @throws IllegalArgumentException for text that is not one double-byte character
     */
    public static Symbol of(String character) {
        byte[] sjis = SjisText.encode(Objects.requireNonNull(character, "character"));
        int code = sjis.length == 2 ? (sjis[0] & 0xFF) << 8 | sjis[1] & 0xFF : 0;
        if (!SjisText.isDoubleByte(code)) {
            throw new IllegalArgumentException("not one double-byte character: " + character);
        }
        return new Symbol(code);
    }

    /** {@return the character; U+FFFD in place of what is none} */
    @Override
    public String text() {
        return SjisText.decode(new byte[] {(byte) (code >> 8), (byte) code});
    }

    /** {@return the codes of a double-byte character; empty for any other pair} */
    public Optional<SymbolCodes> codes() {
        if (!SjisText.isDoubleByte(code)) return Optional.empty();
        int lead = code >> 8;
        int trail = code & 0xFF;
        int row = 2 * lead - (lead <= 0x9F ? 0x101 : 0x181);
        int cell = trail > 0x9E ? trail - 0x9E : trail - (trail < 0x7F ? 0x3F : 0x40);
        if (trail > 0x9E) row++;
        return Optional.of(new SymbolCodes(hex(code), hex((row + 0x20) << 8 | cell + 0x20),
                String.format(Locale.ROOT, "%02d%02d", row, cell)));
    }

    /** {@return the character and its Shift_JIS, such as "☆ 8199"; of what is none the code alone} */
    @Override
    public String toString() {
        return SjisText.isDoubleByte(code) ? text() + " " + hex(code) : hex(code);
    }

    private static String hex(int value) {
        return String.format(Locale.ROOT, "%04X", value);
    }
}
