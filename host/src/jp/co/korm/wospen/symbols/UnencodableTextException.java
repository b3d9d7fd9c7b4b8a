package jp.co.korm.wospen.symbols;

import java.util.Locale;

/** Text holds a character that the library's Shift_JIS has no code for. */
public class UnencodableTextException extends IllegalArgumentException {
    private static final long serialVersionUID = 1;

    /** The character. */
    private final int codePoint;
    /** Where it stands. */
    private final int index;

    UnencodableTextException(int codePoint, int index) {
        super(String.format(Locale.ROOT, "Shift_JIS has no character %s (U+%04X), at index %d",
                Character.isISOControl(codePoint) ? "" : Character.toString(codePoint), codePoint, index));
        this.codePoint = codePoint;
        this.index = index;
    }

    /** {@return the character} */
    public int codePoint() {
        return codePoint;
    }

    /** {@return where it stands, as an index into the string} */
    public int index() {
        return index;
    }
}
