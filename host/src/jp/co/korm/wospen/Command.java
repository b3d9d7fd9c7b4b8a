package jp.co.korm.wospen;

/** The commands of {@link ZikSymAccdata#wVkey}. */
public enum Command {
    DECISION(8),
    NEXT_BLOCK(12),
    RIGHT_ITEM(13),
    LEFT_ITEM(14),
    FILE_OPEN(22),
    FILE_CLOSE(31),
    DATA_REG(42),
    BEFORE_BLOCK(50),
    BEFORE_ITEM(55),
    NEXT_ITEM(67),
    GET_INFO(132),
    FILE_NEW(133),
    FILE_SAVE(134),
    FILE_DELETE(135),
    TITLE_ADD(136),
    TITLE_CHANGE(137),
    TITLE_DELETE(138),
    FILE_CHECK(139),
    TREE_TITLES(140),
    GET_EDIT(141),
    SET_ATTRIBUTE(142),
    SET_POSITION(143),
    FILE_TITLES(144),
    FILE_CONVERT(145);

    private final int code;

    Command(int code) {
        this.code = code;
    }

    /** The value of {@link ZikSymAccdata#wVkey}. */
    public int code() {
        return code;
    }
}
