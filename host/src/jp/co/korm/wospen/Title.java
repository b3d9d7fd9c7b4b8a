package jp.co.korm.wospen;

import java.util.Arrays;
import java.util.Optional;

/**
 * A title by its full path: the file title, then each deeper title, joined by "／". The file
 * title alone names the file itself.
 *
 * <p>Equal by the library's bytes, so a title that cannot be decoded still names itself.
 */
public final class Title implements Item {
    private static final int SEPARATOR = 0x815E;

    private final byte[] sjis;
    private final boolean hasChildren;

    /** Takes the array over. */
    Title(byte[] sjis, boolean hasChildren) {
        this.sjis = sjis;
        this.hasChildren = hasChildren;
    }

    /**
     * The title of a full path.
     *
     * @throws UnencodableTextException at a character that Shift_JIS lacks
     */
    public static Title of(String path) {
        return new Title(SjisText.encode(path), false);
    }

    /** The full path. */
    public String path() {
        return SjisText.decode(sjis);
    }

    /** The last part of the path. */
    @Override
    public String text() {
        int cut = lastSeparator();
        return cut < 0 ? path() : SjisText.decode(Arrays.copyOfRange(sjis, cut + 2, sjis.length));
    }

    /** The title above; empty for a path of one part. */
    public Optional<Title> parent() {
        int cut = lastSeparator();
        return cut < 0 ? Optional.empty() : Optional.of(new Title(Arrays.copyOf(sjis, cut), true));
    }

    /** Whether the list that this title was taken from says that it has child titles. */
    public boolean hasChildren() {
        return hasChildren;
    }

    /** The path in Shift_JIS, a copy. */
    public byte[] sjis() {
        return sjis.clone();
    }

    /** Whether this title stands somewhere below the other. */
    public boolean isBelow(Title other) {
        int length = other.sjis.length;
        return sjis.length > length + 2
                && Arrays.equals(sjis, 0, length, other.sjis, 0, length)
                && codeAt(length) == SEPARATOR;
    }

    /** This title, at or below a file title, under another file title. */
    Title moved(Title file, Title renamed) {
        int below = sjis.length - file.sjis.length;
        byte[] path = Arrays.copyOf(renamed.sjis, renamed.sjis.length + below);
        System.arraycopy(sjis, file.sjis.length, path, renamed.sjis.length, below);
        return new Title(path, hasChildren);
    }

    /** Offset of the last separator; a trail byte never counts as the beginning of one. */
    private int lastSeparator() {
        int last = -1;
        for (int i = 0; i + 1 < sjis.length; i++) {
            if (!SjisText.isDoubleByte(codeAt(i))) continue;
            if (codeAt(i) == SEPARATOR) last = i;
            i++;
        }
        return last;
    }

    private int codeAt(int offset) {
        return (sjis[offset] & 0xFF) << 8 | sjis[offset + 1] & 0xFF;
    }

    @Override
    public boolean equals(Object other) {
        return other instanceof Title title && Arrays.equals(sjis, title.sjis);
    }

    @Override
    public int hashCode() {
        return Arrays.hashCode(sjis);
    }

    @Override
    public String toString() {
        return path();
    }
}
