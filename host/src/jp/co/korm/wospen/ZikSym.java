package jp.co.korm.wospen;

/**
 * A record that can run its command. {@link jp.co.korm.wospen.symbols.SymbolLibrary} is the safer
 * way to do so.
 */
public class ZikSym extends ZikSymAccdata {
    /**
     * A record with buffers of the least sizes.
     *
     * @throws UnsatisfiedLinkError if the native library cannot be loaded
     */
    public ZikSym() {}

    /**
     * Runs the command of {@link #wVkey} on this record and writes every field back.
     *
     * <p>Blocks until the command is done. The open file, its edits and the layout of lists
     * are one per process and unguarded: any thread may call, but only one at a time, also
     * when each has a record of its own.
     *
     * @return 1 done; 0 failed, {@link #lpchMessage} says why (a few queries fail without a
     *     text); 2 nothing was done, or a failed edit, whose text is in the message; 4 a file
     *     of more than ten levels was not opened; -1 no such title, or a save could not write.
     *     Also 0, with nothing changed, when an array or a list box is null or the virtual
     *     machine could not hand out an array.
     */
    public native int AccSym();
}
