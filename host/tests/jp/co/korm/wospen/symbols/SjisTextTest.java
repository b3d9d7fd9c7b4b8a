package jp.co.korm.wospen.symbols;

import static org.junit.jupiter.api.Assertions.*;

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

    /** Where the library's table and the platform's differ. */
    private static final Map<Integer, String> OWN = Map.of(0x815C, "\u2015", 0x8160, "\u301C", 0x8161, "\u2016",
            0x817C, "\u2212", 0x8191, "\u00A2", 0x8192, "\u00A3", 0x81CA, "\u00AC");

    @Test
    void everyCharacterOfJisX0208AndOfRow13ComesBack() {
        int characters = 0;
        for (int code = 0x8140; code <= 0xEAFC; code++) {
            if (!SjisText.isDoubleByte(code)) continue;
            byte[] sjis = {(byte) (code >> 8), (byte) code};
            String other = new String(sjis, Charset.forName("windows-31j"));
            String expected = OWN.getOrDefault(code, other.indexOf('\uFFFD') < 0 ? other : "\uFFFD");
            String text = SjisText.decode(sjis);
            assertEquals(expected, text, Integer.toHexString(code));
            if (text.equals("\uFFFD")) continue;
            assertEquals(ALSO_IN_JIS.getOrDefault(code, code), Symbol.of(text).code(), Integer.toHexString(code));
            characters++;
        }
        assertEquals(6879 + 83, characters);
    }

    /** Text, its Shift_JIS in hexadecimal, and what comes back of what other tables have on a cell. */
    @ParameterizedTest
    @CsvSource({
        "A\\~, 415C7E, A\\~", "ｱﾟ, B1DF, ｱﾟ", "①纊\uE000, 8740FA5CF040, ①纊\uE000",
        "\uFF5E\u2225\uFF0D, 81608161817C, \u301C\u2016\u2212", "\uFFE0\uFFE1\uFFE2, 8191819281CA, \u00A2\u00A3\u00AC",
        "\u00A5\u203E, 818F8150, \uFFE5\uFFE3"
    })
    void textOutsideTheTableAndOfOtherTablesIsTaken(String text, String hex, String back) {
        assertEquals(hex, HexFormat.of().withUpperCase().formatHex(SjisText.encode(text)));
        assertEquals(back, SjisText.decode(SjisText.encode(text)));
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
