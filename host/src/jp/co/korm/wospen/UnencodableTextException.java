package jp.co.korm.wospen;

/** Text holds a character that the library's Shift_JIS has no code for. */
public class UnencodableTextException extends IllegalArgumentException {
    private static final long serialVersionUID = 1;

    private final int codePoint;
    private final int index;

    UnencodableTextException(int codePoint, int index) {
        super(String.format("Shift_JIS has no character %s (U+%04X), at index %d",
                Character.isISOControl(codePoint) ? "" : Character.toString(codePoint), codePoint, index));
        this.codePoint = codePoint;
        this.index = index;
    }

    /** The character. */
    public int codePoint() {
        return codePoint;
    }

    /** Where it stands, as an index into the string. */
    public int index() {
        return index;
    }
}
