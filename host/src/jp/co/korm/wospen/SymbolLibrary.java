package jp.co.korm.wospen;

import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.CharacterCodingException;
import java.nio.charset.Charset;
import java.nio.file.Path;
import java.util.List;
import java.util.concurrent.atomic.AtomicReference;
import java.util.function.Supplier;

/**
 * The native library, owned.
 *
 * <p>The open file and the layout of lists exist once in a process, so there is at most one
 * {@code SymbolLibrary} at a time, and at most one {@link SymbolFile} of it. Any thread may
 * call either; one call runs at a time, and a second waits for the first. Who uses
 * {@link ZikSym} besides is not held back by that, and must not do so meanwhile.
 *
 * <p>What the library refuses is a {@link SymbolException}; text that Shift_JIS lacks an
 * {@link UnencodableTextException}; a value out of range an {@link IllegalArgumentException},
 * or an {@link IndexOutOfBoundsException}, before the library is called.
 */
public final class SymbolLibrary implements AutoCloseable {
    /** File title of the set that comes with the program; it can be neither saved nor deleted. */
    public static final String STANDARD_TITLE = "標準の記号";

    private static final AtomicReference<SymbolLibrary> OWNER = new AtomicReference<>();
    private static final int LONGEST_DIRECTORY = 1022;
    private static final int NO_SUCH_FILE = 0;

    final Request request = new Request();
    private final byte[] user;
    private final byte[] program;
    private final byte[] common;
    private SymbolFile openFile;
    private boolean closed;

    private SymbolLibrary(Path user, Path program, Path common) {
        this.user = directory(user);
        this.program = directory(program);
        this.common = directory(common);
    }

    /**
     * Takes the library for this program.
     *
     * @param user the user's directory; the library only keeps it
     * @param program symbol files that came with the program; scanned first
     * @param common symbol files of all users; new ones are made here
     * @throws IllegalStateException while another one has not been closed
     * @throws IllegalArgumentException for a directory of more than 1022 bytes, or a name that
     *     the system's file names cannot spell
     */
    public static SymbolLibrary acquire(Path user, Path program, Path common) {
        SymbolLibrary library = new SymbolLibrary(user, program, common);
        if (!OWNER.compareAndSet(null, library)) {
            throw new IllegalStateException("the symbol library is in use; close it first");
        }
        boolean ready = false;
        try {
            library.start();
            ready = true;
            return library;
        } finally {
            if (!ready) OWNER.set(null);
        }
    }

    private void start() {
        // The library learns its directories from an open alone. No file title holds a line
        // end, so this one hands them over and opens nothing.
        int result = request.run(Command.FILE_OPEN, new byte[] {'\r'}, user, program, common);
        SymbolException failure = request.failure("cannot use the symbol library", result);
        if (failure.messageNumber().orElse(-1) != NO_SUCH_FILE) throw failure;
        layOut(Layout.DEFAULT);
    }

    /** File titles of all symbol files, in the order in which a title is searched for. */
    public List<Title> fileTitles() {
        return exclusively(() -> {
            int result = request.run(Command.FILE_TITLES);
            if (result != Request.DONE) throw request.failure("cannot list the symbol files", result);
            return request.display();
        });
    }

    /** Whether a symbol file bears the title and can be read. */
    public boolean exists(Title file) {
        return exclusively(() -> request.run(Command.FILE_CHECK, file.sjis()) == Request.DONE);
    }

    /**
     * Opens a symbol file; list 1 shows its titles.
     *
     * @throws SymbolException also while a file is open (message 5)
     */
    public SymbolFile open(Title file) {
        return exclusively(() -> {
            int result = request.run(Command.FILE_OPEN, file.sjis(), user, program, common);
            if (result != Request.DONE) throw request.failure("cannot open " + file, result);
            return openFile = new SymbolFile(this);
        });
    }

    /** {@link #open(Title)} by the text of a file title. */
    public SymbolFile open(String fileTitle) {
        return open(Title.of(fileTitle));
    }

    /**
     * Makes a new symbol file without titles and opens it. It exists on disk once it is saved.
     *
     * @param fileTitle may be empty; it must have one to be saved
     * @throws IllegalStateException while a file is open, whose edits would be lost
     */
    public SymbolFile create(String fileTitle) {
        byte[] sjis = SjisText.encode(fileTitle);
        return exclusively(() -> {
            if (openFile != null) throw new IllegalStateException("close the open symbol file first");
            int result = request.run(Command.FILE_NEW, sjis);
            if (result != Request.DONE) throw request.failure("cannot make " + fileTitle, result);
            return openFile = new SymbolFile(this);
        });
    }

    /** Deletes a symbol file from disk. A file that is open stays open and can be saved again. */
    public void delete(Title file) {
        exclusively(() -> {
            int result = request.run(Command.FILE_DELETE, file.sjis(), user);
            if (result != Request.DONE) throw request.failure("cannot delete " + file, result);
            return null;
        });
    }

    /** Closes the open file, dropping its edits, and gives the library up. */
    @Override
    public synchronized void close() {
        if (closed) return;
        try {
            if (openFile != null) openFile.close();
        } finally {
            closed = true;
            OWNER.set(null);
        }
    }

    /** Runs a step of one or more commands while no other runs. */
    synchronized <T> T exclusively(Supplier<T> step) {
        if (closed) throw new IllegalStateException("the symbol library has been closed");
        return step.get();
    }

    void forget(SymbolFile file) {
        if (openFile == file) openFile = null;
    }

    void layOut(Layout layout) {
        byte[] caption = SjisText.encode(layout.caption());
        request.reserveCaption(caption.length);
        int result = request.run(Command.SET_ATTRIBUTE, caption, number(layout.itemsPerPage()),
                number(layout.headerSetting()), number(layout.itemLength()));
        if (result != Request.DONE) throw request.failure("cannot lay out the lists", result);
    }

    byte[] userDirectory() {
        return user;
    }

    private static byte[] number(int value) {
        return new byte[] {(byte) (value >> 8), (byte) value};
    }

    private static byte[] directory(Path path) {
        byte[] name = fileName(path);
        if (name.length > LONGEST_DIRECTORY) {
            throw new IllegalArgumentException("longer than " + LONGEST_DIRECTORY + " bytes: " + path);
        }
        return name;
    }

    /** The absolute path as the system spells it, which is not Shift_JIS. */
    static byte[] fileName(Path path) {
        String name = path.toAbsolutePath().toString();
        Charset system = Charset.forName(System.getProperty("sun.jnu.encoding", "UTF-8"));
        try {
            ByteBuffer bytes = system.newEncoder().encode(CharBuffer.wrap(name));
            byte[] result = new byte[bytes.remaining()];
            bytes.get(result);
            return result;
        } catch (CharacterCodingException e) {
            throw new IllegalArgumentException(
                    "the system's file names (" + system + ") cannot spell " + name, e);
        }
    }
}
