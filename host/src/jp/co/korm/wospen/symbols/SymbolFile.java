package jp.co.korm.wospen.symbols;

import java.io.UncheckedIOException;
import java.nio.file.Path;
import java.util.List;
import java.util.Objects;
import java.util.Optional;
import java.util.function.Supplier;
import java.util.stream.IntStream;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.symbols.SymbolException.Reason;

/**
 * The open symbol file, as a column browser over its titles and as what edits it.
 *
 * <p>Lists 1 to {@link #focus()} show a title each: list 1 the file, every other what is
 * chosen in the list before it. Edits change a working copy; {@link #save()} writes the file.
 * See {@link SymbolLibrary} for threads and failures.
 *
 * <p>In a file that a person has written, a title may lack its parent. {@link #titles()} has
 * it and {@link #position} shows it; the list of the missing parent is then empty.
 */
public final class SymbolFile implements AutoCloseable {
    private final SymbolLibrary library;
    private final Request request;
    private final Browser browser;
    private final Editor editor;
    private final Saver saver;
    private boolean closed;

    /** @param onDisk what was opened; empty for a new file */
    SymbolFile(SymbolLibrary library, Optional<FilesOnDisk.Found> onDisk) {
        this.library = library;
        this.request = library.request;
        browser = new Browser(request);
        editor = new Editor(request, browser);
        saver = new Saver(library, browser, onDisk);
    }

    /** {@return the file's own title} */
    public Title title() {
        return exclusively(() -> request.level(1));
    }

    /** {@return the file's own title and every title below it, in file order} */
    public List<Title> titles() {
        return exclusively(browser::titles);
    }

    /**
     * {@return whether the last command that filled lists, or {@link #titles()}, had to end one
     * early: a list holds 65535 bytes}
     */
    public boolean cutShort() {
        return exclusively(browser::cutShort);
    }

    /** {@return number of the list with focus; the lists after it show nothing} */
    public int focus() {
        return exclusively(request::focus);
    }

    /**
     * Moves focus back to a list that is shown.
     *
     * @param list its number
     * @throws IndexOutOfBoundsException for a list that is not shown
     * @throws SymbolException if its title is missing in the file
     */
    public void focus(int list) {
        run(() -> {
            checkShown(list);
            browser.focus(list);
        });
    }

    /**
     * A list that is shown.
     *
     * @param list its number
     * @return what it holds now
     * @throws IndexOutOfBoundsException for one that is not shown
     */
    public Column column(int list) {
        return exclusively(() -> {
            checkShown(list);
            return request.column(list);
        });
    }

    /** {@return the list with focus} */
    public Column column() {
        return exclusively(() -> request.column(request.focus()));
    }

    /** {@return the lists that are shown, list 1 first} */
    public List<Column> columns() {
        return exclusively(
                () -> IntStream.rangeClosed(1, request.focus()).mapToObj(request::column).toList());
    }

    /**
     * Next item of the page.
     *
     * @return whether there is one
     */
    public boolean next() {
        return exclusively(() -> browser.moves(Command.NEXT_ITEM));
    }

    /**
     * Previous item of the page.
     *
     * @return whether there is one
     */
    public boolean previous() {
        return exclusively(() -> browser.moves(Command.BEFORE_ITEM));
    }

    /**
     * Next page.
     *
     * @return whether there is one
     */
    public boolean nextPage() {
        return exclusively(() -> browser.turns(Command.NEXT_BLOCK));
    }

    /**
     * Previous page.
     *
     * @return whether there is one
     */
    public boolean previousPage() {
        return exclusively(() -> browser.turns(Command.BEFORE_BLOCK));
    }

    /**
     * Focus to the list before, of a title that is in the file.
     *
     * @return whether there is one
     */
    public boolean ascend() {
        return exclusively(browser::ascend);
    }

    /**
     * Shows the current title in the next list, which gets focus.
     *
     * @return false when the current item is no title, or list 10 has focus
     */
    public boolean descend() {
        return exclusively(browser::descend);
    }

    /**
     * Puts the cursor of the list with focus on an item, and its page where the item is.
     *
     * @param index of the item, from 0
     * @throws IndexOutOfBoundsException if the list has no such item
     */
    public void select(int index) {
        run(() -> request.cursor(request.focus(), Objects.checkIndex(index, request.total(request.focus()))));
    }

    /** {@return the current item as the result; empty when it is no symbol} */
    public Optional<Symbol> decide() {
        return exclusively(() -> browser.moves(Command.DECISION)
                ? Optional.of(request.result()) : Optional.empty());
    }

    /** {@return the current symbol's codes as the library prints them; empty when it is no symbol} */
    public Optional<SymbolCodes> codes() {
        return exclusively(() -> browser.moves(Command.GET_INFO)
                ? Optional.of(request.codes()) : Optional.empty());
    }

    /**
     * Shows a title and the titles above it; each list's cursor is on the way to it.
     *
     * @param title of this file
     * @throws SymbolException if the file has no such title; the lists are as they were
     */
    public void position(Title title) {
        Objects.requireNonNull(title, "title");
        run(() -> browser.position(title));
    }

    /**
     * Changes how lists are laid out, of this file and of those opened later.
     *
     * @param layout for all lists
     */
    public void layOut(Layout layout) {
        Objects.requireNonNull(layout, "layout");
        run(() -> browser.refilled("cannot lay out the lists", request.layOut(layout)));
    }

    /** {@return whether there are edits that have not been saved} */
    public boolean isEdited() {
        return exclusively(() -> request.run(Command.GET_EDIT) == Request.DONE);
    }

    /**
     * Adds a title below the one that the list with focus shows.
     *
     * @param name the last part of its path
     * @throws IllegalStateException in list 10: no list would show it, and a file with titles so
     *     deep cannot be opened
     */
    public void addTitle(String name) {
        byte[] sjis = SjisText.encode(Objects.requireNonNull(name, "name"));
        run(() -> editor.add(name, sjis));
    }

    /**
     * Renames the title that the list with focus shows; in list 1 the file's own.
     *
     * @param name the last part of its path
     */
    public void renameTitle(String name) {
        byte[] sjis = SjisText.encode(Objects.requireNonNull(name, "name"));
        run(() -> editor.edit("cannot rename to " + name, Command.TITLE_CHANGE, sjis));
    }

    /** Deletes the title that the list with focus shows and all below it; focus goes back a list. */
    public void deleteTitle() {
        run(() -> editor.edit("cannot delete the title", Command.TITLE_DELETE, new byte[0]));
    }

    /**
     * Replaces the symbols of the title that the list with focus shows.
     *
     * <p>They are written ten to a line. How the symbols that were there stood on their lines
     * is lost: no list tells it.
     *
     * @param symbols all of them
     * @throws IllegalArgumentException for a symbol that is no double-byte character, or more
     *     symbols than 32767 bytes hold with the ends of their lines
     */
    public void setSymbols(List<Symbol> symbols) {
        byte[] data = Editor.lines(List.copyOf(Objects.requireNonNull(symbols, "symbols")));
        run(() -> editor.edit("cannot set the symbols", Command.DATA_REG, data));
    }

    /**
     * Appends the blocks of a symbol file of the old ".ini" form.
     *
     * @param oldFile is only read
     * @throws UncheckedIOException if the old file cannot be read
     */
    public void convert(Path oldFile) {
        Objects.requireNonNull(oldFile, "oldFile");
        run(() -> editor.convert(oldFile));
    }

    /**
     * Writes the file under its own title. When that was renamed, this makes a new file, and
     * the one that was opened stays.
     *
     * @throws SymbolException with {@link Reason#CHANGED_ON_DISK} or {@link Reason#FILE_EXISTS}
     *     when it would replace something else than was opened. Then nothing is written and
     *     the edits stay: {@link #saveAs} another title, {@link #overwrite()} what is there, or
     *     close and open anew. Also when the library cannot write; what is on disk stays then
     */
    public void save() {
        run(() -> saver.save(request.level(1)));
    }

    /**
     * Writes the file under a title. A title that no file bears becomes the file's own and
     * makes a new file in the common directory, which must be there. The title that the file
     * has on disk replaces that file; its own title is then the one that it has here.
     *
     * @param fileTitle the title
     * @throws SymbolException as {@link #save()}, so for a title that another file bears
     */
    public void saveAs(String fileTitle) {
        Title title = Title.of(Objects.requireNonNull(fileTitle, "fileTitle"));
        run(() -> saver.save(title));
    }

    /** Writes the file under its own title and replaces whatever file bears that on disk. */
    public void overwrite() {
        run(saver::overwrite);
    }

    /**
     * Closes the file; edits that were not saved are lost.
     *
     * @throws SymbolException if that failed; the file is still open, and closing can be tried
     *     again
     */
    @Override
    public void close() {
        synchronized (library) {
            if (closed) return;
            int result = request.run(Command.FILE_CLOSE);
            boolean done = result == Request.DONE || request.reason(result) == Reason.NO_FILE_OPEN;
            if (!done) throw request.failure("cannot close the file", result);
            closed = true;
            library.forget(this);
        }
    }

    private void checkShown(int list) {
        int last = request.focus();
        if (list < 1 || list > last) {
            throw new IndexOutOfBoundsException("list " + list + " is not shown; 1 to " + last + " are");
        }
    }

    private void run(Runnable step) {
        exclusively(() -> {
            step.run();
            return null;
        });
    }

    private <T> T exclusively(Supplier<T> step) {
        return library.exclusively(() -> {
            if (closed) throw new IllegalStateException("the symbol file has been closed");
            return step.get();
        });
    }
}
