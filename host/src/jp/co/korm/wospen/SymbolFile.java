package jp.co.korm.wospen;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.util.EnumSet;
import java.util.List;
import java.util.Optional;
import java.util.Set;
import java.util.function.Supplier;
import java.util.stream.IntStream;

/**
 * The open symbol file, as a column browser over its titles and as what edits it.
 *
 * <p>Lists 1 to {@link #focus()} show a title each: list 1 the file, every other what is
 * chosen in the list before it. Edits change a working copy; {@link #save()} writes the file.
 * See {@link SymbolLibrary} for threads and failures.
 */
public final class SymbolFile implements AutoCloseable {
    private static final int SYMBOLS_PER_LINE = 10;
    private static final Set<Command> FILLING =
            EnumSet.of(Command.RIGHT_ITEM, Command.NEXT_BLOCK, Command.BEFORE_BLOCK);

    private final SymbolLibrary library;
    private final Request request;
    private boolean closed;
    private boolean cutShort;

    SymbolFile(SymbolLibrary library) {
        this.library = library;
        this.request = library.request;
        cutShort = request.cutShort();
    }

    /** The file's own title. */
    public Title title() {
        return exclusively(() -> request.level(1));
    }

    /** The file's own title and every title below it, in file order. */
    public List<Title> titles() {
        return exclusively(() -> {
            done("cannot list the titles", Command.TREE_TITLES);
            return request.display();
        });
    }

    /**
     * Whether the last command that filled lists, or {@link #titles()}, had to end one early:
     * a list holds 65535 bytes.
     */
    public boolean cutShort() {
        return exclusively(() -> cutShort);
    }

    /** Number of the list with focus; the lists after it show nothing. */
    public int focus() {
        return exclusively(request::focus);
    }

    /**
     * Moves focus back to a list that is shown.
     *
     * @throws IndexOutOfBoundsException for a list that is not
     */
    public void focus(int list) {
        exclusively(() -> {
            checkShown(list);
            while (request.focus() > list) done("cannot go back", Command.LEFT_ITEM);
            return null;
        });
    }

    /**
     * A list that is shown.
     *
     * @throws IndexOutOfBoundsException for one that is not
     */
    public Column column(int list) {
        return exclusively(() -> {
            checkShown(list);
            return request.column(list);
        });
    }

    /** The list with focus. */
    public Column column() {
        return exclusively(() -> request.column(request.focus()));
    }

    /** The lists that are shown, list 1 first. */
    public List<Column> columns() {
        return exclusively(
                () -> IntStream.rangeClosed(1, request.focus()).mapToObj(request::column).toList());
    }

    /** Next item of the page. @return whether there is one */
    public boolean next() {
        return moves(Command.NEXT_ITEM);
    }

    /** Previous item of the page. @return whether there is one */
    public boolean previous() {
        return moves(Command.BEFORE_ITEM);
    }

    /** Next page. @return whether there is one */
    public boolean nextPage() {
        return moves(Command.NEXT_BLOCK);
    }

    /** Previous page. @return whether there is one */
    public boolean previousPage() {
        return moves(Command.BEFORE_BLOCK);
    }

    /** Focus to the list before. @return whether there is one */
    public boolean ascend() {
        return moves(Command.LEFT_ITEM);
    }

    /**
     * Shows the current title in the next list, which gets focus.
     *
     * @return false when the current item is no title, or list 10 has focus
     */
    public boolean descend() {
        return exclusively(() -> {
            int before = request.focus();
            if (!moved(Command.RIGHT_ITEM)) return false;
            if (request.listsChanged()) return true;
            request.focus(before); // the title is no longer in the file
            return false;
        });
    }

    /**
     * Puts the cursor of the list with focus on an item, and its page where the item is.
     *
     * @throws IndexOutOfBoundsException if the list has no such item
     */
    public void select(int index) {
        exclusively(() -> {
            int total = request.total(request.focus());
            if (index < 0 || index >= total) {
                throw new IndexOutOfBoundsException("no item " + index + " in a list of " + total);
            }
            request.cursor(request.focus(), index);
            return null;
        });
    }

    /** Takes the current item as the result; empty when it is no symbol. */
    public Optional<Symbol> decide() {
        return exclusively(
                () -> moved(Command.DECISION) ? Optional.of(request.result()) : Optional.empty());
    }

    /** The current symbol's codes as the library prints them; empty when the item is no symbol. */
    public Optional<SymbolCodes> codes() {
        return exclusively(
                () -> moved(Command.GET_INFO) ? Optional.of(request.codes()) : Optional.empty());
    }

    /**
     * Shows a title and the titles above it; each list's cursor is on the way to it.
     *
     * @throws SymbolException if the file has no such title; the lists are as they were
     */
    public void position(Title title) {
        exclusively(() -> {
            int list = request.focus();
            Title before = request.level(list);
            int cursor = request.cursor(list);
            try {
                show(title);
            } catch (SymbolException e) {
                request.focus(list);
                show(before);
                if (cursor >= 0) request.cursor(list, cursor);
                throw e;
            }
            return null;
        });
    }

    /** Changes how lists are laid out, of this file and of those opened later. */
    public void layOut(Layout layout) {
        exclusively(() -> {
            library.layOut(layout);
            refilled();
            return null;
        });
    }

    /** Whether there are edits that have not been saved. */
    public boolean isEdited() {
        return exclusively(() -> request.run(Command.GET_EDIT) == Request.DONE);
    }

    /**
     * Adds a title below the one that the list with focus shows.
     *
     * @throws IllegalStateException in list 10: no list would show it, and a file with titles so
     *     deep cannot be opened
     */
    public void addTitle(String name) {
        byte[] sjis = SjisText.encode(name);
        exclusively(() -> {
            if (request.focus() == ZikSymAccdata.LIST_BOXES) {
                throw new IllegalStateException("no list would show a title below list 10");
            }
            edit("cannot add " + name, Command.TITLE_ADD, sjis);
            return null;
        });
    }

    /** Renames the title that the list with focus shows; in list 1 the file's own. */
    public void renameTitle(String name) {
        edit("cannot rename to " + name, Command.TITLE_CHANGE, SjisText.encode(name));
    }

    /** Deletes the title that the list with focus shows and all below it; focus goes back a list. */
    public void deleteTitle() {
        edit("cannot delete the title", Command.TITLE_DELETE, new byte[0]);
    }

    /**
     * Replaces the symbols of the title that the list with focus shows.
     *
     * @throws IllegalArgumentException for a symbol that is no double-byte character, or more
     *     symbols than 32767 bytes hold with the ends of their lines, ten to a line
     */
    public void setSymbols(List<Symbol> symbols) {
        ByteArrayOutputStream data = new ByteArrayOutputStream();
        for (int i = 0; i < symbols.size(); i++) {
            int code = symbols.get(i).code();
            if (!SjisText.isDoubleByte(code)) {
                throw new IllegalArgumentException(
                        String.format("no double-byte character: %04X at %d", code, i));
            }
            data.write(code >> 8);
            data.write(code);
            boolean endsLine = (i + 1) % SYMBOLS_PER_LINE == 0 || i + 1 == symbols.size();
            if (endsLine) data.writeBytes(new byte[] {'\r', '\n'});
        }
        edit("cannot set the symbols", Command.DATA_REG, data.toByteArray());
    }

    /**
     * Appends the blocks of a symbol file of the old ".ini" form.
     *
     * @throws UncheckedIOException if the old file cannot be read
     */
    public void convert(Path oldFile) {
        exclusively(() -> {
            // The library takes a bare name alone, "old.ini", and for it what follows a
            // backslash: a copy whose name has one can lie anywhere.
            try {
                Path copy = Files.createTempFile("accsym", "\\old.ini");
                try {
                    Files.copy(oldFile, copy, StandardCopyOption.REPLACE_EXISTING);
                    done("cannot convert " + oldFile, Command.FILE_CONVERT, SymbolLibrary.fileName(copy));
                } finally {
                    Files.delete(copy);
                }
            } catch (IOException e) {
                throw new UncheckedIOException("cannot convert " + oldFile, e);
            }
            show(request.level(request.focus()));
            return null;
        });
    }

    /** Writes the file under its own title. */
    public void save() {
        exclusively(() -> {
            write(request.level(1));
            return null;
        });
    }

    /**
     * Writes the file under a title. A title that no symbol file bears becomes the file's own
     * and makes a new file in the common directory; one that a file bears overwrites that
     * file's contents, and the title within stays the open file's own.
     */
    public void saveAs(String fileTitle) {
        Title title = Title.of(fileTitle);
        exclusively(() -> {
            write(title);
            return null;
        });
    }

    /** Closes the file; edits that were not saved are lost. */
    @Override
    public void close() {
        synchronized (library) {
            if (closed) return;
            closed = true;
            library.forget(this);
            int result = request.run(Command.FILE_CLOSE);
            if (result != Request.DONE) throw request.failure("cannot close the file", result);
        }
    }

    private void write(Title title) {
        Title file = request.level(1);
        Title shown = request.level(request.focus());
        done("cannot save " + title, Command.FILE_SAVE, title.sjis(), library.userDirectory());
        Title renamed = request.level(1);
        if (!renamed.equals(file)) show(shown.moved(file, renamed));
    }

    private void edit(String action, Command command, byte[] input) {
        exclusively(() -> {
            done(action, command, input);
            refilled();
            return null;
        });
    }

    /** Positions on a title; the lists of the titles above learn which they show. */
    private void show(Title title) {
        int result = request.run(Command.SET_POSITION, title.sjis());
        boolean fileWithoutTitles = result == Request.FAILED && request.message().isEmpty();
        if (fileWithoutTitles && title.equals(request.level(1)) && request.focus() == 1) return;
        if (result != Request.DONE) {
            throw request.failure("cannot show " + title, fileWithoutTitles ? Request.NOT_FOUND : result);
        }
        cutShort = request.cutShort();
        Title below = title;
        for (int list = request.focus() - 1; list >= 1; list--) {
            request.level(list, below.parent().orElseThrow());
            request.pointAt(list, below);
            below = request.level(list);
        }
    }

    private void refilled() {
        cutShort = request.cutShort();
        request.settleCursors();
    }

    private boolean moves(Command command) {
        return exclusively(() -> moved(command));
    }

    private boolean moved(Command command) {
        int result = request.run(command);
        if (result == Request.NOTHING_DONE) return false;
        if (result != Request.DONE) throw request.failure("cannot move", result);
        if (FILLING.contains(command)) cutShort = request.cutShort();
        return true;
    }

    private void done(String action, Command command, byte[]... strings) {
        int result = request.run(command, strings);
        if (result != Request.DONE) throw request.failure(action, result);
        if (command == Command.TREE_TITLES) cutShort = request.cutShort();
    }

    private void checkShown(int list) {
        int last = request.focus();
        if (list < 1 || list > last) {
            throw new IndexOutOfBoundsException("list " + list + " is not shown; 1 to " + last + " are");
        }
    }

    private <T> T exclusively(Supplier<T> step) {
        return library.exclusively(() -> {
            if (closed) throw new IllegalStateException("the symbol file has been closed");
            return step.get();
        });
    }
}
