package jp.co.korm.wospen.symbols;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.io.IOException;
import java.nio.charset.Charset;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import jp.co.korm.wospen.symbols.SymbolException.Reason;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.function.Executable;
import org.junit.jupiter.api.io.TempDir;

/** What most tests stand on: two directories, a small symbol file, and the library. */
abstract class Workspace {
    static final Charset EUC = Charset.forName("EUC-JP");
    private static final String HYPHENS = "-".repeat(40) + "\n";

    @TempDir Path root;
    Path program;
    Path common;
    Path small;
    SymbolLibrary library;

    @BeforeEach
    void open() throws IOException {
        program = Files.createDirectory(root.resolve("program"));
        common = Files.createDirectory(root.resolve("common"));
        small = write("small.kig", "小", "Ａ=☆★○", "Ａ／Ｘ=△▽", "Ｂ=◎");
        library = SymbolLibrary.acquire(program, common);
    }

    @AfterEach
    void close() {
        library.close();
    }

    /** A symbol file; a block is "path" or "path=symbols". */
    static byte[] text(String title, String... blocks) {
        StringBuilder text = new StringBuilder("〈記号〉\n名称=" + title + "\n");
        for (String block : blocks) {
            String[] parts = block.split("=", 2);
            String symbols = parts.length > 1 ? parts[1] + "\n" : "";
            text.append("［" + parts[0] + "］\n" + HYPHENS + symbols + HYPHENS);
        }
        return text.toString().getBytes(EUC);
    }

    /** Writes a symbol file into the common directory. */
    Path write(String name, String title, String... blocks) throws IOException {
        return Files.write(common.resolve(name), text(title, blocks));
    }

    static List<String> texts(List<? extends Item> items) {
        return items.stream().map(Item::text).toList();
    }

    static List<String> shown(SymbolFile file) {
        return file.columns().stream().map(column -> column.title().path()).toList();
    }

    static SymbolException assertRefused(Reason reason, Executable command) {
        SymbolException e = assertThrows(SymbolException.class, command);
        assertEquals(reason, e.reason(), e.getMessage());
        return e;
    }
}
