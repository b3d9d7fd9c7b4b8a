package jp.co.korm.wospen.symbols;

import static org.junit.jupiter.api.Assertions.*;

import java.io.IOException;
import java.lang.reflect.InvocationTargetException;
import java.net.URL;
import java.net.URLClassLoader;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.ZikSym;
import jp.co.korm.wospen.symbols.SymbolException.Reason;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.function.Executable;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class SymbolLibraryTest extends Workspace {
    @Test
    void refusalsSayWhy() throws IOException {
        write("deep.kig", "深", "１／２／３／４／５／６／７／８／９／０");
        assertEquals(4, assertRefused(Reason.TOO_DEEP, () -> library.open("深")).code());
        String said = assertRefused(Reason.NO_SUCH_FILE, () -> library.open("無")).getMessage();
        assertEquals("cannot open 無: the symbol file does not exist (記号ファイルが存在しません。)", said);
        assertRefused(Reason.STANDARD_NOT_DELETED, () -> library.delete(Title.of(SymbolLibrary.STANDARD_TITLE)));
        assertRefused(Reason.FILE_EXISTS, () -> library.create("小"));
        assertFalse(library.exists(Title.of("無")));
        assertTrue(library.exists(Title.of("小")));
        SymbolFile file = library.open("小");
        assertRefused(Reason.ALREADY_OPEN, () -> library.open("深"));
        assertThrows(IllegalStateException.class, () -> library.create("新"));
        library.delete(Title.of("小"));
        assertEquals("[深]", library.fileTitles().toString());
        file.close();
        library.create("新").close();
    }

    @Test
    void theProgramDirectoryComesFirstAndMustBeThere() throws IOException {
        Path set = Files.write(program.resolve("a.kig"), text("小", "Ｐ"));
        assertEquals("[小, 小]", library.fileTitles().toString());
        try (SymbolFile file = library.open("小")) {
            assertEquals(List.of("Ｐ"), texts(file.column().items()));
        }
        Files.delete(set);
        Files.delete(program);
        for (Executable command : List.<Executable>of(library::fileTitles, () -> library.open("小"),
                () -> library.exists(Title.of("小")), () -> library.delete(Title.of("小")))) {
            String said = assertRefused(Reason.NO_PROGRAM_DIRECTORY, command).getMessage();
            assertTrue(said.contains(program + " is not there"), said);
        }
    }

    @Test
    void valuesOutOfRangeNeverReachTheLibrary() throws IOException {
        write("deep.kig", "深", "１／２／３／４／５／６／７／８／９");
        try (SymbolFile file = library.open("深")) {
            file.position(file.titles().get(1));
            assertThrows(IllegalStateException.class, () -> file.addTitle("底"));
            file.focus(1);
            for (int list : new int[] {0, 2, 11}) {
                assertThrows(IndexOutOfBoundsException.class, () -> file.column(list));
                assertThrows(IndexOutOfBoundsException.class, () -> file.focus(list));
            }
            assertThrows(IndexOutOfBoundsException.class, () -> file.select(0));
            List<Symbol> many = Collections.nCopies(15000, Symbol.of("☆"));
            for (Executable call : List.<Executable>of(() -> new Layout("", 65536, 4, 64), () -> new Layout("", 9, -1, 64),
                    () -> Symbol.of("あい"), () -> Symbol.of("A"), () -> file.setSymbols(many),
                    () -> file.addTitle("長".repeat(16384)))) assertThrows(IllegalArgumentException.class, call);
            Map<String, Executable> nulls = Map.of("title", () -> file.position(null), "name", () -> file.addTitle(null),
                    "symbols", () -> file.setSymbols(null), "oldFile", () -> file.convert(null),
                    "fileTitle", () -> file.saveAs(null), "layout", () -> file.layOut(null),
                    "file", () -> library.delete(null), "path", () -> Title.of(null),
                    "program", () -> SymbolLibrary.acquire(null, common),
                    "common", () -> SymbolLibrary.acquire(program, null));
            nulls.forEach((name, call) -> assertEquals(name, assertThrows(NullPointerException.class, call).getMessage()));
        }
    }

    @Test
    void oneCallRunsAtATime() {
        try (SymbolFile file = library.open("小")) {
            Set<List<String>> seen = IntStream.range(0, 400).parallel().mapToObj(i -> {
                file.position(Title.of(i % 2 == 0 ? "小／Ａ／Ｘ" : "小／Ｂ"));
                List<Column> columns = file.columns();
                return texts(columns.get(columns.size() - 1).items());
            }).collect(Collectors.toSet());
            assertEquals(Set.of(List.of("◎"), List.of("△", "▽")), seen);
        }
    }

    @Test
    void whatFailedHasNotKeptTheLibraryAndAFailedCloseCanBeTriedAgain() {
        assertThrows(IllegalStateException.class, () -> SymbolLibrary.acquire(program, common));
        SymbolFile file = library.open("小");
        byte[] array = library.request.record.lpchString5;
        library.request.record.lpchString5 = null; // so no command is run
        assertRefused(Reason.NOT_RUN, () -> file.addTitle("Ｃ"));
        assertRefused(Reason.NOT_RUN, file::close);
        assertRefused(Reason.NOT_RUN, library::close);
        library.request.record.lpchString5 = array;
        assertEquals(2, file.column().items().size());
        library.close();
        assertThrows(IllegalStateException.class, file::next);
        assertThrows(IllegalStateException.class, library::fileTitles);

        Path longPath = Path.of("/" + "directory/".repeat(110));
        assertThrows(IllegalArgumentException.class, () -> SymbolLibrary.acquire(longPath, longPath));
        ZikSym behind = new ZikSym();
        behind.wVkey = Command.FILE_NEW.code();
        assertEquals(1, behind.AccSym());
        assertRefused(Reason.ALREADY_OPEN, () -> SymbolLibrary.acquire(program, common));
        behind.wVkey = Command.FILE_CLOSE.code();
        assertEquals(1, behind.AccSym());
        SymbolLibrary.acquire(program, common).close();
    }

    @Test
    void directoriesAreSpelledAsTheSystemDoes() {
        Path path = Path.of("/記号");
        String system = System.setProperty("sun.jnu.encoding", "EUC-JP");
        try {
            assertEquals("/記号", new String(SymbolLibrary.fileName(path), EUC));
            System.setProperty("sun.jnu.encoding", "ISO-8859-1");
            assertThrows(IllegalArgumentException.class, () -> SymbolLibrary.fileName(path));
        } finally {
            System.setProperty("sun.jnu.encoding", system);
        }
    }

    /** Not the first use alone, after which the virtual machine calls the class unusable. */
    @ParameterizedTest
    @CsvSource({"'', is empty", "/none/libaccsym.so, names /none/libaccsym.so"})
    void everyUseSaysWhyTheLibraryCannotBeLoaded(String property, String said) throws Exception {
        URL[] jar = {SymbolLibrary.class.getProtectionDomain().getCodeSource().getLocation()};
        String library = System.setProperty("accsym.library", property);
        try (URLClassLoader other = new URLClassLoader(jar, ClassLoader.getPlatformClassLoader())) {
            var record = other.loadClass(ZikSym.class.getName()).getConstructor();
            var text = other.loadClass(SjisText.class.getName()).getMethod("decode", byte[].class);
            var owner = other.loadClass(SymbolLibrary.class.getName()).getMethod("acquire", Path.class, Path.class);
            List<Executable> uses = List.of(record::newInstance, () -> owner.invoke(null, program, common),
                    () -> text.invoke(null, new byte[] {(byte) 0x82, (byte) 0xA0}));
            for (int i = 0; i < 6; i++) {
                Throwable e = assertThrows(InvocationTargetException.class, uses.get(i % 3)).getCause();
                assertTrue(e instanceof UnsatisfiedLinkError && e.getMessage().contains(said), i + ": " + e);
            }
        } finally {
            System.setProperty("accsym.library", library);
        }
    }
}
