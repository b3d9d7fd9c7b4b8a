package jp.co.korm.wospen.symbols;

import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.CharacterCodingException;
import java.nio.charset.Charset;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.Objects;
import java.util.Optional;
import java.util.concurrent.atomic.AtomicReference;
import java.util.function.Supplier;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.NativeLoader;
import jp.co.korm.wospen.ZikSym;
import jp.co.korm.wospen.symbols.SymbolException.Reason;

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

    final Request request = new Request();
    final FilesOnDisk files;
    private final byte[] program;
    private final byte[] common;
    private SymbolFile openFile;
    private boolean closed;

    private SymbolLibrary(Path program, Path common) {
        this.program = directory(program);
        this.common = directory(common);
        files = new FilesOnDisk(program.toAbsolutePath(), common.toAbsolutePath());
    }

    /**
     * Takes the library for this program.
     *
     * @param program symbol files that came with the program; it must be there, and is scanned
     *     first
     * @param common symbol files of all users, where new ones are made; it must be there when
     *     one is saved
     * @return the library, to be closed
     * @throws IllegalStateException while another one has not been closed
     * @throws IllegalArgumentException for a directory of more than 1022 bytes, or a name that
     *     the system's file names cannot spell
     * @throws UnsatisfiedLinkError if the native library cannot be loaded
     */
    public static SymbolLibrary acquire(Path program, Path common) {
        Objects.requireNonNull(program, "program");
        Objects.requireNonNull(common, "common");
        NativeLoader.load();
        SymbolLibrary library = new SymbolLibrary(program, common);
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
        int result = runOpen(new byte[] {'\r'});
        if (request.reason(result) != Reason.NO_SUCH_FILE) {
            throw request.failure("cannot use the symbol library", result);
        }
        result = request.layOut(Layout.DEFAULT);
        if (result != Request.DONE) throw request.failure("cannot lay out the lists", result);
    }

    private int runOpen(byte[] title) {
        return request.run(Command.FILE_OPEN, title, anyDirectory(), program, common);
    }

    /** For the user's directory, which the library wants to be given and never reads. */
    byte[] anyDirectory() {
        return common;
    }

    /** The failure of the last command, which has looked through the directories. */
    SymbolException failure(String action, int result) {
        Reason reason = request.reason(result);
        boolean scanned = reason == Reason.NO_SUCH_FILE || reason == Reason.CANNOT_READ
                || reason == Reason.NOT_RUN; // as listing the files says it
        if (scanned && !(Files.isDirectory(files.program()) && Files.isReadable(files.program()))) {
            return new SymbolException(action, Reason.NO_PROGRAM_DIRECTORY, result, request.message(),
                    "the program directory " + files.program() + " is not there or cannot be read");
        }
        return request.failure(action, result);
    }

    /**
     * {@return file titles of all symbol files, in the order in which a title is searched for}
     *
     * @throws SymbolException also without the program directory, as all that looks for a file
     */
    public List<Title> fileTitles() {
        return exclusively(() -> {
            int result = request.run(Command.FILE_TITLES);
            if (result != Request.DONE) throw failure("cannot list the symbol files", result);
            return request.display();
        });
    }

    /**
     * Whether a symbol file bears a title and can be read.
     *
     * @param file the file title
     * @return whether it does
     */
    public boolean exists(Title file) {
        Objects.requireNonNull(file, "file");
        return exclusively(() -> {
            int result = request.run(Command.FILE_CHECK, file.sjis());
            if (result == Request.DONE) return true;
            SymbolException failure = failure("cannot look for " + file, result);
            if (failure.reason() != Reason.NO_SUCH_FILE) throw failure;
            return false;
        });
    }

    /**
     * Opens a symbol file; list 1 shows its titles.
     *
     * @param file the file title
     * @return the file, to be closed
     * @throws SymbolException also while a file is open
     */
    public SymbolFile open(Title file) {
        Objects.requireNonNull(file, "file");
        return exclusively(() -> {
            Optional<FilesOnDisk.Found> onDisk = files.find(file); // before, so as to miss no change
            int result = runOpen(file.sjis());
            if (result != Request.DONE) throw failure("cannot open " + file, result);
            return openFile = new SymbolFile(this, onDisk);
        });
    }

    /**
     * {@link #open(Title)} by the text of a file title.
     *
     * @param fileTitle the file title
     * @return the file, to be closed
     */
    public SymbolFile open(String fileTitle) {
        return open(Title.of(Objects.requireNonNull(fileTitle, "fileTitle")));
    }

    /**
     * Makes a new symbol file without titles and opens it. It exists on disk once it is saved.
     *
     * @param fileTitle may be empty; it must have one to be saved
     * @return the file, to be closed
     * @throws IllegalStateException while a file is open, whose edits would be lost
     */
    public SymbolFile create(String fileTitle) {
        byte[] sjis = SjisText.encode(Objects.requireNonNull(fileTitle, "fileTitle"));
        return exclusively(() -> {
            if (openFile != null) throw new IllegalStateException("close the open symbol file first");
            int result = request.run(Command.FILE_NEW, sjis);
            if (result != Request.DONE) throw failure("cannot make " + fileTitle, result);
            return openFile = new SymbolFile(this, Optional.empty());
        });
    }

    /**
     * Deletes a symbol file from disk. A file that is open stays open and can be saved again.
     *
     * @param file the file title
     */
    public void delete(Title file) {
        Objects.requireNonNull(file, "file");
        exclusively(() -> {
            int result = request.run(Command.FILE_DELETE, file.sjis(), anyDirectory());
            if (result != Request.DONE) throw failure("cannot delete " + file, result);
            return null;
        });
    }

    /**
     * Closes the open file, dropping its edits, and gives the library up.
     *
     * @throws SymbolException if the file could not be closed; that can be tried again
     */
    @Override
    public synchronized void close() {
        if (closed) return;
        if (openFile != null) openFile.close();
        closed = true;
        OWNER.set(null);
    }

    /** Runs a step of one or more commands while no other runs. */
    synchronized <T> T exclusively(Supplier<T> step) {
        if (closed) throw new IllegalStateException("the symbol library has been closed");
        return step.get();
    }

    void forget(SymbolFile file) {
        if (openFile == file) openFile = null;
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
        Charset system = fileNames();
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

    /** How the system spells file names. */
    static Charset fileNames() {
        return Charset.forName(System.getProperty("sun.jnu.encoding", "UTF-8"));
    }
}
