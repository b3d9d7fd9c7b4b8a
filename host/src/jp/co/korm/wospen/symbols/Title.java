package jp.co.korm.wospen.symbols;

import java.util.Arrays;
import java.util.Objects;
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
     * @param path its parts, joined by "／"
     * @return the title, whether or not a file has it
     * @throws UnencodableTextException at a character that Shift_JIS lacks
     */
    public static Title of(String path) {
        return new Title(SjisText.encode(Objects.requireNonNull(path, "path")), false);
    }

    /** {@return the full path} */
    public String path() {
        return SjisText.decode(sjis);
    }

    /** {@return the last part of the path} */
    @Override
    public String text() {
        int cut = lastSeparator(0);
        return cut < 0 ? path() : SjisText.decode(Arrays.copyOfRange(sjis, cut + 2, sjis.length));
    }

    /** {@return the title above; empty for a path of one part} */
    public Optional<Title> parent() {
        int cut = lastSeparator(0);
        return cut < 0 ? Optional.empty() : Optional.of(new Title(Arrays.copyOf(sjis, cut), true));
    }

    /** The title above in a file, whose own title is above all, whatever stands in it. */
    Title parentIn(Title file) {
        int cut = startsWith(file) ? lastSeparator(file.sjis.length) : -1;
        return cut < 0 ? file : new Title(Arrays.copyOf(sjis, cut), true);
    }

    /** {@return whether the list that this title was taken from says that it has child titles} */
    public boolean hasChildren() {
        return hasChildren;
    }

    /** {@return the path in Shift_JIS, a copy} */
    public byte[] sjis() {
        return sjis.clone();
    }

    /**
     * Whether this title stands somewhere below another.
     *
     * @param other of the same file
     * @return false also for the title itself
     */
    public boolean isBelow(Title other) {
        int length = Objects.requireNonNull(other, "other").sjis.length;
        return sjis.length > length + 2 && startsWith(other) && codeAt(length) == SEPARATOR;
    }

    /** This title, at or below a file title, under another file title. */
    Title moved(Title file, Title renamed) {
        int below = sjis.length - file.sjis.length;
        byte[] path = Arrays.copyOf(renamed.sjis, renamed.sjis.length + below);
        System.arraycopy(sjis, file.sjis.length, path, renamed.sjis.length, below);
        return new Title(path, hasChildren);
    }

    private boolean startsWith(Title other) {
        int length = other.sjis.length;
        return sjis.length >= length && Arrays.equals(sjis, 0, length, other.sjis, 0, length);
    }

    /** Offset of the last separator from there on; a trail byte never counts as the beginning of one. */
    private int lastSeparator(int from) {
        int last = -1;
        for (int i = from; i + 1 < sjis.length; i++) {
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
