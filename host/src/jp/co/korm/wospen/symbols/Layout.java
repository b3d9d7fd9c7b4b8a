package jp.co.korm.wospen.symbols;

import java.util.Objects;

/**
 * How lists are laid out.
 *
 * @param caption caption of every list
 * @param itemsPerPage lines of a page, 0 to 65535; 0: lists are not paged
 * @param headerSetting 0 and 1: items have no number before them; 2: the number; above: the
 *     number and ":", blanks up to one byte less than the setting; 0 to 65535
 * @param itemLength handed through to {@link Column#itemLength()}, 0 to 65535
 */
public record Layout(String caption, int itemsPerPage, int headerSetting, int itemLength) {
    private static final int MAX_NUMBER = 65535;

    /** Nine lines a page, no numbers. */
    public static final Layout DEFAULT = new Layout("", 9, 0, 64);

    /**
     * A layout that the library can be given.
     *
     * @param caption as above
     * @param itemsPerPage as above
     * @param headerSetting as above
     * @param itemLength as above
     * @throws IllegalArgumentException naming the number that is out of range
     * @throws UnencodableTextException for a caption with a character that Shift_JIS lacks
     */
    public Layout {
        check("itemsPerPage", itemsPerPage, MAX_NUMBER);
        check("headerSetting", headerSetting, MAX_NUMBER);
        check("itemLength", itemLength, MAX_NUMBER);
        SjisText.encode(Objects.requireNonNull(caption, "caption"));
    }

    private static void check(String name, int value, int greatest) {
        if (value < 0 || value > greatest) {
            throw new IllegalArgumentException(name + " is " + value + ", not 0 to " + greatest);
        }
    }
}
