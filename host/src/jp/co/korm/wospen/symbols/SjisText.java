package jp.co.korm.wospen.symbols;

import java.io.ByteArrayOutputStream;
import java.nio.charset.Charset;
import java.util.HashMap;
import java.util.Map;
import java.util.Objects;
import jp.co.korm.wospen.NativeLoader;
import jp.co.korm.wospen.ZikNative;

/**
 * Text between Java and the library's Shift_JIS.
 *
 * <p>A character of JIS X 0208 is what the library's own table says, so 1-29 is U+2015, 1-33
 * U+301C and 1-61 U+2212; only 1-32 is U+FF3C here, because U+005C is the ASCII byte. Codes
 * outside JIS X 0208, the vendors' rows, are those of windows-31j. Going to Shift_JIS, what
 * windows-31j has on a cell of JIS X 0208 is accepted for it too (U+FF5E for 1-33). Nine
 * signs of row 13 stand in JIS X 0208 as well (8790 is 81E0): their text becomes the latter.
 *
 * <p>ASCII and half-width katakana are single bytes. All methods may be called by any thread.
 */
public final class SjisText {
    private static final char REPLACEMENT = '\uFFFD';
    private static final char GETA = '\u3013';
    private static final int GETA_CODE = 0x81AC;
    private static final Charset VENDOR = Charset.forName("windows-31j");

    /** Characters that the native conversion drops because they lie below U+0100. */
    private static final Map<Integer, Character> DROPPED = Map.ofEntries(
            Map.entry(0x814C, '\u00B4'), Map.entry(0x814E, '\u00A8'), Map.entry(0x815F, '\uFF3C'),
            Map.entry(0x817D, '\u00B1'), Map.entry(0x817E, '\u00D7'), Map.entry(0x8180, '\u00F7'),
            Map.entry(0x818B, '\u00B0'), Map.entry(0x8191, '\u00A2'), Map.entry(0x8192, '\u00A3'),
            Map.entry(0x8198, '\u00A7'), Map.entry(0x81CA, '\u00AC'), Map.entry(0x81F7, '\u00B6'));

    /** Both directions, made at the first use: what fails there fails again and is not lost. */
    private static volatile SjisText tables;

    /** Character of every double-byte code; 0 where there is none. */
    private final char[] toCharacter = new char[0x10000];
    /** Code of every character of JIS X 0208. */
    private final Map<Character, Integer> toCode = new HashMap<>();

    private SjisText() {
        for (int code = 0x8140; code <= 0xFCFC; code++) {
            if (!isDoubleByte(code)) continue;
            char character = jisCharacter(code);
            if (character != 0) {
                toCode.put(character, code);
            } else {
                character = vendorCharacter(code);
            }
            toCharacter[code] = character;
        }
        toCode.put('\u00A5', 0x818F); // windows-31j would make these two an ASCII byte
        toCode.put('\u203E', 0x8150);
    }

    private static SjisText tables() {
        SjisText made = tables;
        if (made == null) {
            NativeLoader.load();
            made = new SjisText();
            tables = made;
        }
        return made;
    }

    /**
     * Decodes Shift_JIS up to its first NUL or its end. Never fails: a pair without a character
     * and a byte that begins none become one U+FFFD each.
     *
     * @param sjis the bytes
     * @return their text
     */
    public static String decode(byte[] sjis) {
        Objects.requireNonNull(sjis, "sjis");
        StringBuilder text = new StringBuilder();
        for (int i = 0; i < sjis.length && sjis[i] != 0; i++) {
            int first = sjis[i] & 0xFF;
            int code = i + 1 < sjis.length ? first << 8 | sjis[i + 1] & 0xFF : 0;
            if (first < 0x80) {
                text.append((char) first);
            } else if (first >= 0xA1 && first <= 0xDF) {
                text.append((char) (0xFF61 + first - 0xA1));
            } else if (isDoubleByte(code)) {
                text.append(character(code));
                i++;
            } else {
                text.append(REPLACEMENT);
            }
        }
        return text.toString();
    }

    /**
     * Encodes text as Shift_JIS, without a NUL at its end.
     *
     * @param text the text
     * @return its bytes
     * @throws UnencodableTextException at a character without a code, and at U+0000, which would
     *     end the text for the library
     */
    public static byte[] encode(String text) {
        Objects.requireNonNull(text, "text");
        ByteArrayOutputStream sjis = new ByteArrayOutputStream();
        for (int i = 0; i < text.length(); i++) {
            char character = text.charAt(i);
            if (character > 0 && character < 0x80) {
                sjis.write(character);
            } else if (character >= 0xFF61 && character <= 0xFF9F) {
                sjis.write(character - 0xFF61 + 0xA1);
            } else {
                int code = code(character);
                if (code == 0) throw new UnencodableTextException(text.codePointAt(i), i);
                sjis.write(code >> 8);
                sjis.write(code);
            }
        }
        return sjis.toByteArray();
    }

    /** Character of a double-byte code, lead byte in the high half; U+FFFD when there is none. */
    static char character(int code) {
        char character = tables().toCharacter[code];
        return character == 0 ? REPLACEMENT : character;
    }

    /** Whether both bytes lie in the ranges of a double-byte character. */
    static boolean isDoubleByte(int code) {
        int lead = code >> 8;
        int trail = code & 0xFF;
        return (lead >= 0x81 && lead <= 0x9F || lead >= 0xE0 && lead <= 0xFC)
                && trail >= 0x40 && trail <= 0xFC && trail != 0x7F;
    }

    private static int code(char character) {
        Integer code = tables().toCode.get(character);
        if (code != null) return code;
        byte[] vendor = String.valueOf(character).getBytes(VENDOR);
        return vendor.length == 2 ? (vendor[0] & 0xFF) << 8 | vendor[1] & 0xFF : 0;
    }

    /** What the library's table has for the code; 0 when nothing. */
    private static char jisCharacter(int code) {
        Character dropped = DROPPED.get(code);
        if (dropped != null) return dropped;
        byte[] unicode = new byte[3];
        if (ZikNative.AccSjisToUnicode(pair(code), 2, unicode) != 1) {
            throw new OutOfMemoryError("the virtual machine could not hand out an array");
        }
        char character = (char) ((unicode[0] & 0xFF) << 8 | unicode[1] & 0xFF);
        return character == GETA && code != GETA_CODE ? 0 : character;
    }

    private static char vendorCharacter(int code) {
        String text = new String(pair(code), VENDOR);
        return text.length() == 1 && text.charAt(0) != REPLACEMENT ? text.charAt(0) : 0;
    }

    private static byte[] pair(int code) {
        return new byte[] {(byte) (code >> 8), (byte) code};
    }
}
