package jp.co.korm.wospen.symbols;

import static org.junit.jupiter.api.Assertions.*;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.attribute.FileTime;
import java.util.List;
import java.util.stream.IntStream;
import jp.co.korm.wospen.symbols.SymbolException.Reason;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class EditingTest extends Workspace {
    private static final List<Symbol> SYMBOLS = IntStream.range(0, 25).mapToObj(i -> new Symbol(0x829F + i)).toList();

    @Test
    void editsReachTheDiskWithASave() throws IOException {
        try (SymbolFile file = library.create("新")) {
            assertTrue(file.isEdited());
            file.addTitle("一");
            file.addTitle("二");
            assertEquals(2, assertRefused(Reason.TITLE_EXISTS, () -> file.addTitle("二")).code());
            assertRefused(Reason.PARENT_STAYS, file::deleteTitle);
            assertRefused(Reason.PARENT_HAS_NO_SYMBOLS, () -> file.setSymbols(SYMBOLS));
            assertTrue(file.descend());
            file.setSymbols(SYMBOLS);
            file.select(24);
            file.setSymbols(SYMBOLS.subList(0, 12));
            assertEquals(11, file.column().currentIndex());
            file.renameTitle("壱");
            file.addTitle("子");
            file.select(0);
            assertTrue(file.descend());
            file.deleteTitle();
            assertRefused(Reason.STANDARD_NOT_SAVED, () -> file.saveAs(SymbolLibrary.STANDARD_TITLE));
            file.select(5);
            file.saveAs("改");
            assertEquals(List.of("改", "改／壱"), shown(file));
            assertEquals(5, file.column().currentIndex());
            assertFalse(file.isEdited());
            file.setSymbols(List.of()); // lost
        }
        byte[] expected = text("改", "壱=ぁあぃいぅうぇえぉお\nかが", "二");
        assertArrayEquals(expected, Files.readAllBytes(common.resolve("@0000000.kig")));
    }

    @Test
    void convertsAnOldFile() throws IOException {
        Path old = Files.write(root.resolve("old.ini"), SjisText.encode("［古い］\r\nsel1=☆ ★\r\n"));
        try (SymbolFile file = library.open("小")) {
            file.convert(old);
            assertEquals(List.of("Ａ", "Ｂ", "古い"), texts(file.column().items()));
            file.position(Title.of("小／古い"));
            assertEquals(List.of("☆", "★"), texts(file.column().items()));
            assertRefused(Reason.CANNOT_CONVERT, () -> file.convert(small));
            assertThrows(UncheckedIOException.class, () -> file.convert(root.resolve("none.ini")));
        }
    }

    private static final byte[] OTHER = text("小", "Ａ=☆★◎", "Ａ／Ｘ=△▽", "Ｂ=◎"); // as long as what is opened

    private void disturb(String how) throws IOException {
        FileTime time = Files.getLastModifiedTime(small);
        switch (how) {
            case "same bytes" -> Files.write(small, Files.readAllBytes(small));
            case "other bytes" -> Files.write(small, text("小"));
            case "within the tick" -> Files.setLastModifiedTime(Files.write(small, OTHER), time);
            case "one before it" -> Files.write(program.resolve("before.kig"), OTHER);
            case "removed" -> Files.delete(small);
            default -> fail(how);
        }
    }

    @ParameterizedTest
    @CsvSource({"other bytes, CHANGED_ON_DISK", "within the tick, CHANGED_ON_DISK", "one before it, FILE_EXISTS"})
    void aSaveReplacesNothingButWhatWasOpened(String how, Reason reason) throws IOException {
        try (SymbolFile file = library.open("小")) {
            file.addTitle("Ｃ");
            disturb(how);
            byte[] there = Files.readAllBytes(small);
            assertTrue(assertRefused(reason, file::save).getMessage().contains(".kig"));
            assertTrue(file.isEdited());
            assertArrayEquals(there, Files.readAllBytes(small));
            file.saveAs("別");
            file.save();
            assertRefused(Reason.FILE_EXISTS, () -> file.saveAs("小"));
            file.renameTitle("小");
            file.overwrite();
            file.addTitle("Ｄ");
            file.save();
        }
        try (SymbolFile file = library.open("小")) {
            assertEquals(List.of("Ａ", "Ｂ", "Ｃ", "Ｄ"), texts(file.column().items()));
        }
    }

    @ParameterizedTest
    @ValueSource(strings = {"same bytes", "removed"})
    void aSaveThatLosesNothingIsNotRefused(String how) throws IOException {
        try (SymbolFile file = library.open("小")) {
            disturb(how);
            file.save();
            file.renameTitle("大");
            file.saveAs("小"); // the file of that title, which then has another
            file.save();
            assertEquals("[大]", library.fileTitles().toString());
            Files.delete(library.files.find(file.title()).orElseThrow().path());
            Files.delete(common);
            assertTrue(assertRefused(Reason.NO_COMMON_DIRECTORY, file::save).getMessage().contains(common.toString()));
        }
    }

    @Test
    void aSaveThatFailsOrWouldHideTheFileKeepsItsTitle() throws IOException {
        write("other.kig", "他");
        try (SymbolFile file = library.open("小")) {
            file.descend();
            Path moved = Files.move(common, root.resolve("moved"));
            assertRefused(Reason.NO_COMMON_DIRECTORY, () -> file.saveAs("新"));
            assertEquals(List.of("小", "小／Ａ"), shown(file));
            Files.move(moved, common);
            file.save();
            file.focus(1);
            file.renameTitle("他");
            assertRefused(Reason.FILE_EXISTS, () -> file.saveAs("小"));
            assertArrayEquals(text("小", "Ａ=☆★○", "Ａ／Ｘ=△▽", "Ｂ=◎"), Files.readAllBytes(small));
        }
    }

    @ParameterizedTest
    @ValueSource(strings = {"ｱ記~", "同", ""})
    void aSaveLooksAtTheFileThatTheLibraryTakes(String title) throws IOException {
        for (int i = 0; i < 20; i++) write(title.length() + "z" + i + (i % 2 == 0 ? ".kig.old" : ".txt"), title, "Ｔ" + i);
        try (SymbolFile file = library.open(title)) {
            Path found = library.files.find(Title.of(title)).orElseThrow().path();
            assertArrayEquals(text(title, file.titles().get(1).text()), Files.readAllBytes(found));
        }
    }
}
