package jp.co.korm.wospen;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.charset.Charset;
import java.util.HexFormat;
import java.util.List;
import java.util.Map;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class SjisTextTest {
    /** Signs of row 13 that JIS X 0208 has too: their text becomes its code. */
    private static final Map<Integer, Integer> ALSO_IN_JIS = Map.of(
            0x8790, 0x81E0, 0x8791, 0x81DF, 0x8792, 0x81E7, 0x8795, 0x81E3, 0x8796, 0x81DB,
            0x8797, 0x81DA, 0x879A, 0x81E6, 0x879B, 0x81BF, 0x879C, 0x81BE);

    private static byte[] bytes(int code) {
        return new byte[] {(byte) (code >> 8), (byte) code};
    }

    private static int roundTrip(int code) {
        byte[] sjis = SjisText.encode(SjisText.decode(bytes(code)));
        return sjis.length == 2 ? (sjis[0] & 0xFF) << 8 | sjis[1] & 0xFF : -1;
    }

    /** Character of a cell in tables of the platform; null when the cell is empty. */
    private static String expected(int row, int cell, int code) {
        if (row == 1 && cell == 29) return "\u2015"; // the platform has U+2014
        boolean vendor = row == 13;
        if (row >= 9 && row <= 15 && !vendor) return null;
        String text = vendor ? new String(bytes(code), Charset.forName("windows-31j"))
                : new String(bytes(0xA0A0 + (row << 8) + cell), Charset.forName("EUC-JP"));
        return text.indexOf('\uFFFD') >= 0 ? null : text;
    }

    @Test
    void everyCharacterOfJisX0208AndOfRow13ComesBack() {
        int characters = 0;
        for (int row = 1; row <= 84; row++) {
            for (int cell = 1; cell <= 94; cell++) {
                int lead = (row - 1) / 2 + (row <= 62 ? 0x81 : 0xC1);
                int trail = row % 2 == 0 ? cell + 0x9E : cell + (cell <= 63 ? 0x3F : 0x40);
                int code = lead << 8 | trail;
                String expected = expected(row, cell, code);
                String decoded = SjisText.decode(bytes(code));
                assertEquals(expected == null ? "\uFFFD" : expected, decoded, row + "-" + cell);
                if (expected == null) continue;
                assertEquals(ALSO_IN_JIS.getOrDefault(code, code), roundTrip(code), row + "-" + cell);
                characters++;
            }
        }
        assertEquals(6879 + 83, characters);
    }

    @Test
    void theNativeEncoderFindsWhatTheTableHas() {
        int found = 0;
        for (int code = 0x8140; code <= 0xEAA4; code++) {
            if (!SjisText.isDoubleByte(code)) continue;
            byte[] unicode = new byte[3];
            byte[] sjis = new byte[3];
            assertEquals(1, ZikNative.AccSjisToUnicode(bytes(code), 2, unicode));
            assertEquals(1, ZikNative.AccUnicodeToSjis(unicode, 2, sjis));
            if (sjis[0] != (byte) (code >> 8) || sjis[1] != (byte) code) continue;
            assertEquals((unicode[0] & 0xFF) << 8 | unicode[1] & 0xFF, SjisText.character(code));
            found++;
        }
        assertEquals(6879 - 12, found);
    }

    /** Text, and its Shift_JIS in hexadecimal. */
    @ParameterizedTest
    @CsvSource({
        "A\\~, 415C7E", "ｱﾟ, B1DF", "\u00D7\uFF3C, 817E815F", "\u2015\u301C\u2016\u2212, 815C81608161817C", "①纊\uE000, 8740FA5CF040"
    })
    void textComesBack(String text, String hex) {
        assertEquals(hex, HexFormat.of().withUpperCase().formatHex(SjisText.encode(text)));
        assertEquals(text, SjisText.decode(SjisText.encode(text)));
    }

    /** What other tables have on a cell, and the cell's own character. */
    @ParameterizedTest
    @CsvSource({
        "\uFF5E\u2225\uFF0D, \u301C\u2016\u2212", "\uFFE0\uFFE1\uFFE2, \u00A2\u00A3\u00AC", "\u00A5\u203E, \uFFE5\uFFE3"
    })
    void charactersOfOtherTablesAreAccepted(String other, String own) {
        assertEquals(own, SjisText.decode(SjisText.encode(other)));
    }

    @Test
    void aCharacterWithoutACodeIsNamed() {
        for (String character : List.of("\u20AC", "😀", "\u00E9", "\0", "\u0080", "\uD800", "\uFFFD")) {
            var e = assertThrows(UnencodableTextException.class, () -> SjisText.encode("あ" + character + "い"));
            assertEquals(character.codePointAt(0), e.codePoint());
            assertEquals(1, e.index());
            assertTrue(e.getMessage().contains(String.format("U+%04X", character.codePointAt(0))), e.getMessage());
        }
    }

    /** Bytes in hexadecimal, and their text. */
    @ParameterizedTest
    @CsvSource({
        "8230, \uFFFD0", "8041, \uFFFDA", "A041, \uFFFDA", "FD41, \uFFFDA", "859F41, \uFFFDA", "4182, A\uFFFD",
        "827F41, \uFFFD\u007FA", "82A00041, あ"
    })
    void badBytesNeverTakeTheirNeighbours(String hex, String text) {
        assertEquals(text, SjisText.decode(HexFormat.of().parseHex(hex)));
    }
}
