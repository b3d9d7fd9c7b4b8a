package jp.co.korm.wospen.symbols;

import java.util.List;
import jp.co.korm.wospen.Command;

/**
 * The lists of the open file. Of every list that is shown, its title, its items and what an
 * edit would act on belong together; the library by itself is sure of the current list alone.
 *
 * <p>So all ways lead through {@link #shows}. The library fills the lists from the title's own
 * up to list 1 by cutting its path, and stops with message 7 where a title on the way is not
 * in the file, as in a file that a person has written. Such a list is empty here, and those
 * above it are filled one by one.
 */
final class Browser {
    private final Request request;
    private boolean cutShort;

    /** For a file that has just been opened or made. */
    Browser(Request request) {
        this.request = request;
        cutShort = request.cutShort();
    }

    boolean cutShort() {
        return cutShort;
    }

    List<Title> titles() {
        int result = request.run(Command.TREE_TITLES);
        if (result != Request.DONE) throw request.failure("cannot list the titles", result);
        cutShort = request.cutShort();
        return request.display();
    }

    boolean ascend() {
        int list = request.focus() - 1;
        while (list >= 1 && !goesBackTo(list)) list--;
        return list >= 1;
    }

    void focus(int list) {
        if (list == request.focus() || goesBackTo(list)) return;
        throw request.failure("cannot show " + request.level(list), Request.NOT_FOUND);
    }

    boolean descend() {
        Item item = request.column(request.focus()).current().orElse(null);
        if (!(item instanceof Title title)) return false; // no list after the tenth: it shows none
        show(title);
        return true;
    }

    void position(Title title) {
        int list = request.focus();
        Title before = request.level(list);
        int cursor = request.place(list);
        try {
            show(title);
        } catch (SymbolException e) {
            request.focus(list);
            show(before);
            request.cursor(list, cursor);
            throw e;
        }
    }

    /** Shows a title in place of the one in focus, which it was before it was renamed. */
    void follow(Title title) {
        int cursor = request.place(request.focus());
        show(title);
        request.cursor(request.focus(), cursor);
    }

    boolean moves(Command command) {
        int result = request.run(command);
        if (result == Request.NOTHING_DONE) return false;
        if (result != Request.DONE) throw request.failure("cannot move", result);
        return true;
    }

    boolean turns(Command page) {
        int result = request.run(page);
        if (result == Request.NOTHING_DONE) return false;
        refilled("cannot turn the page", result);
        return true;
    }

    /** After a command that filled the lists: puts right what it left, and the cursors on items. */
    void refilled(String action, int result) {
        if (result == Request.DONE) {
            cutShort = request.cutShort();
        } else if (request.isUnfilled(result)) {
            int list = request.focus();
            int cursor = request.place(list);
            while (!shows(request.level(list))) {
                if (--list == 0) throw request.failure(action, Request.NOT_FOUND);
                request.focus(list); // the parent of a title that was deleted is missing too
            }
            request.cursor(list, cursor);
        } else {
            throw request.failure(action, result);
        }
        for (int list = 1; list <= request.focus(); list++) request.cursor(list, request.place(list));
    }

    private void show(Title title) {
        if (!shows(title)) throw request.failure("cannot show " + title, Request.NOT_FOUND);
    }

    private boolean goesBackTo(int list) {
        int before = request.focus();
        int cursor = request.place(list);
        request.focus(list);
        boolean shown = shows(request.level(list));
        if (shown) request.cursor(list, cursor);
        else request.focus(before);
        return shown;
    }

    /**
     * Shows a title and the titles above it; each list's cursor is on the way to it.
     *
     * @return false when the file has no such title; then the list with focus is empty
     */
    private boolean shows(Title title) {
        Title file = request.level(1);
        int result = request.run(Command.SET_POSITION, title.sjis());
        if (result == Request.NOT_FOUND) return false;
        boolean unseen = result == Request.FAILED && request.message().isEmpty();
        // In a file without titles the library takes any path for its own, without a look.
        if (unseen && request.level(1).equals(title)) return title.equals(file);
        boolean orphan = request.isUnfilled(result) && request.level(request.focus()).equals(title);
        SymbolException failure = request.failure("cannot show " + title, result);
        if (result != Request.DONE && !orphan) throw failure;
        cutShort = request.cutShort();
        // With every title above in the file it was the disk that could not be read.
        if (orphan && !fillsAbove(title, file)) throw failure;
        request.cursor(request.focus(), 0);
        Title below = title;
        for (int list = request.focus() - 1; list >= 1; list--) {
            Title above = below.parentIn(file);
            request.level(list, above);
            request.pointAt(list, below);
            below = above;
        }
        return true;
    }

    /**
     * Fills the lists above a title, from the nearest to list 1.
     *
     * @return whether a title above is missing, and all others are shown
     */
    private boolean fillsAbove(Title title, Title file) {
        int list = request.focus();
        boolean missing = false;
        int result = Request.NOT_FOUND;
        Title above = title;
        for (int i = list - 1; i >= 1 && result != Request.DONE; i--) {
            above = above.parentIn(file);
            request.focus(i); // the library empties it
            result = request.run(Command.SET_POSITION, above.sjis());
            missing |= result == Request.NOT_FOUND;
            cutShort |= request.cutShort();
        }
        request.focus(list);
        return missing && result == Request.DONE;
    }
}
