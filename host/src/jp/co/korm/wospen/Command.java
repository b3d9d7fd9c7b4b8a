package jp.co.korm.wospen;

/** The commands of {@link ZikSymAccdata#wVkey}. */
public enum Command {
    /** Takes the current symbol as the result. */
    DECISION(8),
    /** Next page. */
    NEXT_BLOCK(12),
    /** Descends into the current title. */
    RIGHT_ITEM(13),
    /** Focus to the list before. */
    LEFT_ITEM(14),
    /** Opens a symbol file. */
    FILE_OPEN(22),
    /** Closes the symbol file. */
    FILE_CLOSE(31),
    /** Replaces the symbols of a title. */
    DATA_REG(42),
    /** Previous page. */
    BEFORE_BLOCK(50),
    /** Previous item. */
    BEFORE_ITEM(55),
    /** Next item. */
    NEXT_ITEM(67),
    /** Codes of the current symbol. */
    GET_INFO(132),
    /** Makes a symbol file. */
    FILE_NEW(133),
    /** Saves the symbol file. */
    FILE_SAVE(134),
    /** Deletes a symbol file. */
    FILE_DELETE(135),
    /** Adds a title. */
    TITLE_ADD(136),
    /** Renames a title. */
    TITLE_CHANGE(137),
    /** Deletes a title. */
    TITLE_DELETE(138),
    /** Asks whether a symbol file exists. */
    FILE_CHECK(139),
    /** Lists the titles of the file. */
    TREE_TITLES(140),
    /** Asks for unsaved edits. */
    GET_EDIT(141),
    /** Lays out the lists. */
    SET_ATTRIBUTE(142),
    /** Shows a title. */
    SET_POSITION(143),
    /** Lists the symbol files. */
    FILE_TITLES(144),
    /** Takes over an old file. */
    FILE_CONVERT(145);

    private final int code;

    Command(int code) {
        this.code = code;
    }

    /** {@return the value of {@link ZikSymAccdata#wVkey}} */
    public int code() {
        return code;
    }
}
