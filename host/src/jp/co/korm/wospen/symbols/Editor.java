package jp.co.korm.wospen.symbols;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.util.List;
import java.util.Locale;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.ZikSymAccdata;

/** What changes the open file's working copy. */
final class Editor {
    private static final int SYMBOLS_PER_LINE = 10;

    private final Request request;
    private final Browser browser;

    Editor(Request request, Browser browser) {
        this.request = request;
        this.browser = browser;
    }

    void add(String name, byte[] sjis) {
        if (request.focus() == ZikSymAccdata.LIST_BOXES) {
            throw new IllegalStateException("no list would show a title below list 10");
        }
        edit("cannot add " + name, Command.TITLE_ADD, sjis);
    }

    void edit(String action, Command command, byte[] input) {
        browser.refilled(action, request.run(command, input));
    }

    /** Symbols as the library takes them. */
    static byte[] lines(List<Symbol> symbols) {
        ByteArrayOutputStream data = new ByteArrayOutputStream();
        for (int i = 0; i < symbols.size(); i++) {
            int code = symbols.get(i).code();
            if (!SjisText.isDoubleByte(code)) {
                throw new IllegalArgumentException(
                        String.format(Locale.ROOT, "no double-byte character: %04X at %d", code, i));
            }
            data.write(code >> 8);
            data.write(code);
            boolean endsLine = (i + 1) % SYMBOLS_PER_LINE == 0 || i + 1 == symbols.size();
            if (endsLine) data.writeBytes(new byte[] {'\r', '\n'});
        }
        return data.toByteArray();
    }

    /**
     * The library takes a bare name alone, "old.ini", and for it what follows a backslash: a
     * copy whose name has one can lie anywhere.
     */
    void convert(Path oldFile) {
        int result;
        try {
            Path copy = Files.createTempFile("accsym", "\\old.ini");
            try {
                Files.copy(oldFile, copy, StandardCopyOption.REPLACE_EXISTING);
                result = request.run(Command.FILE_CONVERT, SymbolLibrary.fileName(copy));
            } finally {
                Files.delete(copy);
            }
        } catch (IOException e) {
            throw new UncheckedIOException("cannot convert " + oldFile, e);
        }
        if (result != Request.DONE) throw request.failure("cannot convert " + oldFile, result);
        browser.follow(request.level(request.focus()));
    }
}
