package jp.co.korm.wospen;

/**
 * One list box of a {@link ZikSymAccdata}: the child titles of the title that it shows, then
 * that title's symbols. What holds for fields of the record holds here.
 */
public class ZikSymListBox {
    /** Bytes of a new {@link #lpchLBTitle}; it must hold the longest caption that is set. */
    public static final int TITLE_BYTES = 256;
    /** Least bytes of {@link #lpchLBLevel}. */
    public static final int LEVEL_BYTES = 515;
    /** Least bytes of {@link #lpchLBList}. */
    public static final int LIST_BYTES = 65536 + 2;
    /** Least bytes of {@link #lpchLBListInfo}. */
    public static final int LIST_INFO_BYTES = 32768;
    /** Least bytes of {@link #lpchLBItemInfo}. */
    public static final int ITEM_INFO_BYTES = 16;

    /** Bit of an attribute byte: the title has child titles. */
    public static final int LBINFO_CHILD = 1;
    /** Bit of an attribute byte: the item is a title. */
    public static final int LBINFO_TITLE = 2;
    /** Bit of an attribute byte: the item is a symbol. */
    public static final int LBINFO_SYMBOL = 4;

    /** Caption. */
    public byte[] lpchLBTitle = new byte[TITLE_BYTES];
    /** Full path of the title shown; the library sets it for the list that becomes current. */
    public byte[] lpchLBLevel = new byte[LEVEL_BYTES];
    /** Bytes used in {@link #lpchLBList}. */
    public int cchLBListLen;
    /** All items: header, text, NUL and, unless the header setting is 0, one more NUL. */
    public byte[] lpchLBList = new byte[LIST_BYTES];
    /** An attribute byte per item, {@code LBINFO_} bits. */
    public byte[] lpchLBListInfo = new byte[LIST_INFO_BYTES];
    /** Number of the first item of the page, counted from 1. */
    public int cchLBItemPageFirst;
    /** Items in the list. */
    public int cchLBItemTotal;
    /** Cursor on the page, counted from 1; 0: no current item. */
    public int cchLBItemNum;
    /** Items per page; 0: not paged. */
    public int cchLBItemNumMax;
    /** Item length for the host's use. */
    public int cchLBItemLenMax;
    /** Header setting: 0 and 1 none, else bytes of a header and 1. */
    public int cchLBItemHead;
    /** Bytes used in {@link #lpchLBItemInfo}. */
    public int cchLBItemInfoSize;
    /** Shift_JIS, JIS and kuten of the current symbol as text at bytes 0, 5 and 10. */
    public byte[] lpchLBItemInfo = new byte[ITEM_INFO_BYTES];

    static {
        if (NativeLoader.canLoad()) initFIDs();
    }

    /**
     * A list box with buffers of the sizes above.
     *
     * @throws UnsatisfiedLinkError if the native library cannot be loaded
     */
    public ZikSymListBox() {
        NativeLoader.load();
    }

    /** As {@link ZikSymAccdata#initFIDs()}, for this class. */
    public static native void initFIDs();
}
