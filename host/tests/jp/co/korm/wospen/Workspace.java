package jp.co.korm.wospen;

import static org.junit.jupiter.api.Assertions.assertEquals;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.charset.Charset;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.Comparator;
import java.util.stream.Stream;

/** A directory of symbol files that is gone after the test, and records to run commands with. */
final class Workspace implements AutoCloseable {
    static final Charset EUC = Charset.forName("EUC-JP");
    private static final String HYPHENS = "-".repeat(40) + "\n";

    final Path directory;
    final Path common;

    private final byte[] directoryName;
    private final byte[] commonName;

    Workspace() {
        try {
            directory = Files.createTempDirectory("kigou-test");
            common = Files.createDirectory(directory.resolve("common"));
            directoryName = nulEnded(SymbolLibrary.fileName(directory));
            commonName = nulEnded(SymbolLibrary.fileName(common));
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
    }

    /** Writes a symbol file; a block is "path" or "path=symbols". */
    Workspace file(String name, String title, String... blocks) {
        StringBuilder text = new StringBuilder("〈記号〉\n名称=" + title + "\n");
        for (String block : blocks) {
            String[] parts = block.split("=", 2);
            text.append("［").append(parts[0]).append("］\n").append(HYPHENS);
            if (parts.length > 1) text.append(parts[1]).append("\n");
            text.append(HYPHENS);
        }
        write(name, text.toString().getBytes(EUC));
        return this;
    }

    void write(String name, byte[] bytes) {
        try {
            Files.write(directory.resolve(name), bytes);
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
    }

    /** A title A with a child and symbols, and a title B; what most tests open. */
    Workspace small() {
        return file("small.kig", "小", "Ａ=☆★○", "Ａ／Ｘ=△▽", "Ｂ=◎");
    }

    SymbolLibrary library() {
        return SymbolLibrary.acquire(directory, directory, common);
    }

    int run(ZikSymAccdata record, Command command, String string) {
        record.wVkey = command.code();
        record.lpchString1 = nulEnded(SjisText.encode(string));
        record.lpchString2 = directoryName;
        record.lpchString3 = directoryName;
        record.lpchString4 = commonName;
        return ((ZikSym) record).AccSym();
    }

    ZikSym open(ZikSym record, String title) {
        assertEquals(1, run(record, Command.FILE_OPEN, title), SjisText.decode(record.lpchMessage));
        return record;
    }

    static byte[] nulEnded(byte[] text) {
        return Arrays.copyOf(text, text.length + 2);
    }

    @Override
    public void close() {
        try (Stream<Path> files = Files.walk(directory)) {
            files.sorted(Comparator.reverseOrder()).forEach(path -> path.toFile().delete());
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
    }
}
