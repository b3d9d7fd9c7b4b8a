package jp.co.korm.wospen.symbols;

import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Optional;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.symbols.SymbolException.Reason;

/** Writes the open file, and knows what that may replace. */
final class Saver {
    private final SymbolLibrary library;
    private final Request request;
    private final Browser browser;
    /** The file that was opened or saved last; empty when there has been none. */
    private Optional<FilesOnDisk.Found> onDisk;

    Saver(SymbolLibrary library, Browser browser, Optional<FilesOnDisk.Found> onDisk) {
        this.library = library;
        this.request = library.request;
        this.browser = browser;
        this.onDisk = onDisk;
    }

    void save(Title title) {
        Optional<FilesOnDisk.Found> there = library.files.find(title);
        check(title, there);
        write(title, there);
    }

    void overwrite() {
        Title title = request.level(1);
        write(title, library.files.find(title));
    }

    /** Another program may have the file open too, and neither knows of the other. */
    private void check(Title title, Optional<FilesOnDisk.Found> there) {
        if (there.isEmpty()) return;
        Path path = there.get().path();
        checkOwnTitle(title, path);
        if (there.equals(onDisk)) return;
        boolean changed = onDisk.isPresent() && path.equals(onDisk.get().path());
        String what = changed ? " has changed since it was opened"
                : " bears the title and is not what was opened";
        throw new SymbolException("cannot save " + title,
                changed ? Reason.CHANGED_ON_DISK : Reason.FILE_EXISTS, Request.FAILED, "",
                path + what + "; nothing was saved. Save under another title, or overwrite what is there");
    }

    /** The file at that path will bear the open file's own title, which no other may bear. */
    private void checkOwnTitle(Title title, Path path) {
        Title own = request.level(1);
        if (own.equals(title)) return;
        Optional<Path> other = library.files.find(own).map(FilesOnDisk.Found::path);
        if (other.isEmpty() || other.get().equals(path)) return;
        throw new SymbolException("cannot save " + title, Reason.FILE_EXISTS, Request.FAILED, "",
                other.get() + " bears the open file's title " + own + "; nothing was saved. Rename the open file");
    }

    private void write(Title title, Optional<FilesOnDisk.Found> there) {
        Title file = request.level(1);
        Title shown = request.level(request.focus());
        int result = request.run(Command.FILE_SAVE, title.sjis(), library.anyDirectory());
        SymbolException failure = failure(title, result, there.isEmpty());
        Title renamed = request.level(1); // also when the writing then failed
        if (result != Request.DONE && !renamed.equals(file)) {
            // Back, lest a save under the old title writes the new one into that file.
            request.focus(1);
            if (request.run(Command.TITLE_CHANGE, file.sjis()) == Request.DONE) renamed = file;
            browser.follow(shown.moved(file, renamed));
        } else if (!renamed.equals(file)) {
            browser.follow(shown.moved(file, renamed));
        }
        if (result != Request.DONE) throw failure;
        onDisk = library.files.find(renamed);
    }

    private SymbolException failure(Title title, int result, boolean newFile) {
        String action = "cannot save " + title;
        Path common = library.files.common();
        if (newFile && request.reason(result) == Reason.CANNOT_OPEN && !Files.isDirectory(common)) {
            return new SymbolException(action, Reason.NO_COMMON_DIRECTORY, result, request.message(),
                    "the common directory " + common + " is not there");
        }
        return library.failure(action, result);
    }
}
