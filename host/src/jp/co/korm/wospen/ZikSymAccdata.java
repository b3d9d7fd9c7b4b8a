package jp.co.korm.wospen;

/**
 * The record of one command as the native library sees it.
 *
 * <p>The library reads and writes these fields through identifiers of this class, so a
 * subclass may add fields and even hide these: the ones declared here count.
 *
 * <p>Strings are Shift_JIS ended by a NUL; lengths count bytes. Numbers are 16-bit unsigned
 * in the library: of a greater {@code int} the low 16 bits arrive, and what comes back lies
 * between 0 and 65535. Every array and every {@code tListBox}n must be there, or a command
 * answers 0 without being run. The library cannot see how long an array is: the {@code _BYTES}
 * constants are the least sizes with which it never writes past one. Nobody may replace an
 * array or a list box while a command runs.
 */
public class ZikSymAccdata {
    /** Least bytes of {@link #lpchMessage}. */
    public static final int MESSAGE_BYTES = 80;
    /** Least bytes of {@link #lpchResult}. */
    public static final int RESULT_BYTES = 3;
    /** Least bytes of {@link #lpchDisplay}. */
    public static final int DISPLAY_BYTES = 65536;
    /** List boxes of a record. */
    public static final int LIST_BOXES = 10;

    /** Bit of the data-status fields: the list boxes changed. */
    public static final int ACCDATA_LIST = 8;
    /** Bit of the data-status fields: {@link #lpchDisplay} holds a fresh list. */
    public static final int ACCDATA_DISPLAY = 16;
    /** Bit of the data-status fields: {@link #lpchResult} holds a decision. */
    public static final int ACCDATA_RESULT = 128;

    /** Outputs that are valid, {@code ACCDATA_} bits. */
    public int wDataStatus;
    /** Outputs that the last command changed, {@code ACCDATA_} bits. */
    public int wDataUpdate;
    /** Title, path, file title or data, by command. */
    public byte[] lpchString1 = new byte[2];
    /** Open: user directory. Set-attribute: items per page, two bytes, high byte first. */
    public byte[] lpchString2 = new byte[2];
    /** Open: program directory. Set-attribute: header length, likewise. */
    public byte[] lpchString3 = new byte[2];
    /** Open: common directory. Set-attribute: item length, likewise. */
    public byte[] lpchString4 = new byte[2];
    /** No command reads it. */
    public byte[] lpchString5 = new byte[2];
    /** Command code, see {@link Command}. */
    public int wVkey;
    /** Length of {@link #lpchResult}. */
    public int cchResult;
    /** The symbol chosen last. */
    public byte[] lpchResult = new byte[RESULT_BYTES];
    /** Length of {@link #lpchDisplay} without its final NUL. */
    public int cchDisplay;
    /** Strings, each with a NUL, and one more NUL after the last. */
    public byte[] lpchDisplay = new byte[DISPLAY_BYTES];
    /** Length of {@link #lpchMessage}; 0 when there is none. */
    public int cchMessage;
    /** Error text; emptied at the start of every command. */
    public byte[] lpchMessage = new byte[MESSAGE_BYTES];
    /** Length of {@link #lpchStatus}. */
    public int cchStatus;
    /** Status line; no command writes it. */
    public byte[] lpchStatus = new byte[MESSAGE_BYTES];
    /** List box with focus, 1 to 10. */
    public int wCurrentList = 1;

    /** List box 1. */
    public ZikSymListBox tListBox1 = new ZikSymListBox();
    /** List box 2. */
    public ZikSymListBox tListBox2 = new ZikSymListBox();
    /** List box 3. */
    public ZikSymListBox tListBox3 = new ZikSymListBox();
    /** List box 4. */
    public ZikSymListBox tListBox4 = new ZikSymListBox();
    /** List box 5. */
    public ZikSymListBox tListBox5 = new ZikSymListBox();
    /** List box 6. */
    public ZikSymListBox tListBox6 = new ZikSymListBox();
    /** List box 7. */
    public ZikSymListBox tListBox7 = new ZikSymListBox();
    /** List box 8. */
    public ZikSymListBox tListBox8 = new ZikSymListBox();
    /** List box 9. */
    public ZikSymListBox tListBox9 = new ZikSymListBox();
    /** List box 10. */
    public ZikSymListBox tListBox10 = new ZikSymListBox();
    /** The same ten for Java's use; the library reads {@code tListBox1} to 10 alone. */
    public ZikSymListBox[] tListBox = {
        tListBox1, tListBox2, tListBox3, tListBox4, tListBox5,
        tListBox6, tListBox7, tListBox8, tListBox9, tListBox10
    };

    static {
        if (NativeLoader.canLoad()) initFIDs();
    }

    /**
     * A record with buffers of the sizes above.
     *
     * @throws UnsatisfiedLinkError if the native library cannot be loaded
     */
    public ZikSymAccdata() {
        NativeLoader.load();
    }

    /**
     * Tells the library the identifiers of the fields of this class. Called when the class is
     * initialised; calling it again does no harm, but not while a command runs.
     *
     * @throws NoSuchFieldError if the class has not the fields that the library expects
     */
    public static native void initFIDs();
}
