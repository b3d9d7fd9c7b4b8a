package jp.co.korm.wospen;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.UncheckedIOException;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import java.util.Optional;
import java.util.Set;
import java.util.concurrent.CountDownLatch;
import java.util.stream.IntStream;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.function.Executable;

class SymbolLibraryTest {
    private final Workspace workspace = new Workspace().small();
    private final SymbolLibrary library = workspace.library();

    @AfterEach
    void close() {
        library.close();
        workspace.close();
    }

    private static List<String> texts(List<? extends Item> items) {
        return items.stream().map(Item::text).toList();
    }

    private static List<String> paths(List<Title> titles) {
        return titles.stream().map(Title::path).toList();
    }

    private static List<String> shown(SymbolFile file) {
        return file.columns().stream().map(column -> column.title().path()).toList();
    }

    /** The command fails with this result and this number of a message, -1 for none. */
    private static void assertRefused(int code, int message, Executable command) {
        SymbolException e = assertThrows(SymbolException.class, command);
        assertEquals(code, e.code(), e.getMessage());
        assertEquals(message, e.messageNumber().orElse(-1), e.getMessage());
        assertTrue(message < 0 || e.getMessage().contains(e.japanese()), e.getMessage());
    }

    @Test
    void browsesFromListToList() {
        try (SymbolFile file = library.open("小")) {
            assertEquals(List.of("Ａ", "Ｂ"), texts(file.column().items()));
            assertTrue(file.column().titles().get(0).hasChildren());
            assertEquals(Optional.empty(), file.decide());
            assertTrue(file.descend());
            assertEquals("小／Ａ", file.column().title().path());
            assertEquals(List.of("Ｘ", "☆", "★", "○"), texts(file.column().items()));
            assertTrue(file.next());
            assertEquals(Optional.of(Symbol.of("☆")), file.decide());
            assertEquals(Optional.of(new SymbolCodes("8199", "2179", "0189")), file.codes());
            assertFalse(file.descend());
            assertTrue(file.previous());
            assertFalse(file.previous());
            assertTrue(file.descend());
            assertEquals(List.of("△", "▽"), texts(file.columns().get(2).symbols()));
            assertTrue(file.ascend());
            file.focus(1);
            assertFalse(file.ascend());
            file.select(1);
            assertTrue(file.descend());
            assertEquals(List.of("◎"), texts(file.column().items()));
            assertEquals(List.of("小", "小／Ａ", "小／Ａ／Ｘ", "小／Ｂ"), paths(file.titles()));
        }
    }

    @Test
    void positionShowsTheTitlesAboveToo() {
        try (SymbolFile file = library.open("小")) {
            file.position(Title.of("小／Ａ／Ｘ"));
            assertEquals(List.of("小", "小／Ａ", "小／Ａ／Ｘ"), shown(file));
            assertEquals("小／Ａ／Ｘ", file.column(2).current().orElseThrow().toString());
            file.select(1);
            assertRefused(-1, -1, () -> file.position(Title.of("小／Ｚ")));
            assertEquals(3, file.focus());
            assertEquals(Optional.of(Symbol.of("▽")), file.decide());
        }
    }

    @Test
    void pagesAndHeadersFollowTheLayout() {
        workspace.file("pages.kig", "頁", "Ａ=" + "☆".repeat(11) + "★");
        try (SymbolFile file = library.open("頁")) {
            file.layOut(new Layout("見出し", 5, 4, 7));
            file.position(Title.of("頁／Ａ"));
            Column column = file.column();
            assertEquals(List.of("1: ", "2: ", "3: ", "4: ", "5: ", "1: "), column.headers().subList(0, 6));
            assertEquals(12, column.symbols().size());
            assertEquals("見出し", column.caption());
            assertEquals(7, column.itemLength());
            assertTrue(file.nextPage());
            assertTrue(file.nextPage());
            assertFalse(file.nextPage());
            assertEquals(List.of("☆", "★"), texts(file.column().page()));
            assertTrue(file.next());
            assertEquals(Optional.of(Symbol.of("★")), file.decide());
            file.layOut(new Layout("", 3, 2, 0));
            assertEquals(9, file.column().pageFirst());
            assertEquals(11, file.column().currentIndex());
            assertTrue(file.previousPage());
            assertEquals(6, file.column().currentIndex());
            file.layOut(new Layout("", 0, 3, 0)); // numbers go on, and outgrow the header
            assertEquals(List.of("9:", "10:", "11:", "12:"), file.column().headers().subList(8, 12));
            assertEquals("★", file.column().items().get(11).text());
            assertFalse(file.nextPage());
        }
    }

    @Test
    void editsReachTheDiskWithASave() {
        List<Symbol> symbols = IntStream.range(0, 25).mapToObj(i -> new Symbol(0x829F + i)).toList();
        try (SymbolFile file = library.create("新")) {
            assertTrue(file.isEdited());
            file.addTitle("一");
            file.addTitle("二");
            assertRefused(2, 12, () -> file.addTitle("二"));
            assertRefused(2, 14, file::deleteTitle);
            assertRefused(2, 15, () -> file.setSymbols(symbols));
            assertTrue(file.descend());
            file.setSymbols(symbols);
            assertEquals(symbols, file.column().symbols());
            file.select(24);
            file.setSymbols(symbols.subList(0, 3));
            assertEquals(2, file.column().currentIndex());
            file.renameTitle("壱");
            assertEquals("新／壱", file.column().title().path());
            file.addTitle("子");
            file.select(0);
            assertTrue(file.descend());
            file.deleteTitle();
            assertEquals(2, file.focus());
            assertRefused(0, 17, () -> file.saveAs(SymbolLibrary.STANDARD_TITLE));
            file.saveAs("改");
            assertEquals(List.of("改", "改／壱"), shown(file));
            assertFalse(file.isEdited());
            file.setSymbols(List.of());
            file.save();
            file.setSymbols(symbols); // lost
        }
        assertEquals(Set.of("改", "小"), Set.copyOf(paths(library.fileTitles())));
        try (SymbolFile file = library.open("改")) {
            assertEquals(List.of("改", "改／壱", "改／二"), paths(file.titles()));
            assertTrue(file.descend());
            assertEquals(List.of(), file.column().items());
        }
        library.delete(Title.of("改"));
        assertEquals(List.of("小"), paths(library.fileTitles()));
    }

    @Test
    void convertsAnOldFile() {
        workspace.write("old.ini", SjisText.encode("［古い］\r\nsel1=☆ ★\r\n"));
        try (SymbolFile file = library.open("小")) {
            file.convert(workspace.directory.resolve("old.ini"));
            assertEquals(List.of("Ａ", "Ｂ", "古い"), texts(file.column().items()));
            file.position(Title.of("小／古い"));
            assertEquals(List.of("☆", "★"), texts(file.column().items()));
            assertRefused(0, 16, () -> file.convert(workspace.directory.resolve("small.kig")));
            Path none = workspace.directory.resolve("none.ini");
            assertThrows(UncheckedIOException.class, () -> file.convert(none));
            assertTrue(file.isEdited());
        }
    }

    @Test
    void refusalsCarryCodeAndMessage() {
        String deepest = "１／２／３／４／５／６／７／８／９／０";
        workspace.file("deep.kig", "深", IntStream.rangeClosed(1, 10)
                .mapToObj(level -> deepest.substring(0, 2 * level - 1)).toArray(String[]::new));
        assertRefused(4, 9, () -> library.open("深"));
        assertRefused(0, 0, () -> library.open("無"));
        assertRefused(0, 0, () -> library.delete(Title.of("無")));
        assertRefused(0, 19, () -> library.delete(Title.of(SymbolLibrary.STANDARD_TITLE)));
        assertRefused(0, 18, () -> library.create("小"));
        assertFalse(library.exists(Title.of("無")));
        assertTrue(library.exists(Title.of("小")));
        try (SymbolFile file = library.open("小")) {
            assertRefused(0, 5, () -> library.open("深"));
            assertThrows(IllegalStateException.class, () -> library.create("新"));
            library.delete(Title.of("小"));
            assertEquals(List.of("深"), paths(library.fileTitles()));
            assertEquals(2, file.column().items().size());
        }
    }

    @Test
    void valuesOutOfRangeNeverReachTheLibrary() {
        assertThrows(IllegalArgumentException.class, () -> new Layout("", 65536, 4, 64));
        assertThrows(IllegalArgumentException.class, () -> new Layout("", 9, -1, 64));
        assertThrows(IllegalArgumentException.class, () -> Symbol.of("あい"));
        assertThrows(IllegalArgumentException.class, () -> Symbol.of("A"));
        Path longPath = Path.of("/" + "directory/".repeat(110));
        try (SymbolFile file = library.open("小")) {
            for (int list : new int[] {0, 2, 11}) {
                assertThrows(IndexOutOfBoundsException.class, () -> file.column(list));
                assertThrows(IndexOutOfBoundsException.class, () -> file.focus(list));
            }
            assertThrows(IndexOutOfBoundsException.class, () -> file.select(2));
            for (int list = 1; list < 10; list++) {
                file.addTitle("深" + list);
                file.select(file.column().titles().size() - 1);
                assertTrue(file.descend());
            }
            assertThrows(IllegalStateException.class, () -> file.addTitle("底"));
            assertFalse(file.descend());
            file.focus(1);
            assertThrows(UnencodableTextException.class, () -> file.addTitle("😀"));
            assertThrows(UnencodableTextException.class, () -> file.addTitle("a\0b"));
            assertThrows(IllegalArgumentException.class, () -> file.addTitle("長".repeat(16384)));
            List<Symbol> many = Collections.nCopies(15000, Symbol.of("☆"));
            List<Symbol> noCharacter = List.of(new Symbol(0x4142));
            assertThrows(IllegalArgumentException.class, () -> file.setSymbols(many));
            assertThrows(IllegalArgumentException.class, () -> file.setSymbols(noCharacter));
        }
        library.close();
        assertThrows(IllegalArgumentException.class, () -> SymbolLibrary.acquire(longPath, longPath, longPath));
        workspace.library().close(); // what failed has not kept the library
    }

    @Test
    void oneOwnerAndOneCallAtATime() throws InterruptedException {
        assertThrows(IllegalStateException.class, workspace::library);
        List<Throwable> failures = Collections.synchronizedList(new ArrayList<>());
        try (SymbolFile file = library.open("小")) {
            CountDownLatch start = new CountDownLatch(1);
            List<Thread> threads = IntStream.range(0, 4).mapToObj(number -> new Thread(() -> {
                try {
                    start.await();
                    for (int i = 0; i < 100; i++) {
                        file.position(Title.of(number % 2 == 0 ? "小／Ａ／Ｘ" : "小／Ｂ"));
                        List<Column> columns = file.columns();
                        Title title = columns.get(columns.size() - 1).title();
                        List<String> expected = title.path().equals("小／Ｂ") ? List.of("◎") : List.of("△", "▽");
                        assertEquals(expected, texts(columns.get(columns.size() - 1).items()));
                    }
                } catch (Throwable e) {
                    failures.add(e);
                }
            })).toList();
            threads.forEach(Thread::start);
            start.countDown();
            for (Thread thread : threads) thread.join();
            library.close();
            assertThrows(IllegalStateException.class, file::next);
        }
        assertEquals(List.of(), failures);
        assertThrows(IllegalStateException.class, library::fileTitles);
    }

    @Test
    void symbolsKnowTheCodesThatTheLibraryPrints() {
        List<Symbol> borders = List.of(new Symbol(0x8140), new Symbol(0x829F), new Symbol(0x84BE), new Symbol(0x9FFC), new Symbol(0xE040));
        try (SymbolFile file = library.create("新")) {
            file.addTitle("一");
            assertTrue(file.descend());
            file.setSymbols(borders);
            for (int i = 0; i < borders.size(); i++) {
                file.select(i);
                assertEquals(file.codes().orElseThrow(), borders.get(i).codes().orElseThrow());
            }
        }
    }
}
