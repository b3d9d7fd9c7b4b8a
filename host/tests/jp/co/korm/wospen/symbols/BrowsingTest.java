package jp.co.korm.wospen.symbols;

import static org.junit.jupiter.api.Assertions.*;

import java.io.IOException;
import java.nio.file.Files;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.Optional;
import java.util.Random;
import java.util.function.Predicate;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import jp.co.korm.wospen.symbols.SymbolException.Reason;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class BrowsingTest extends Workspace {
    private static final Map<Character, Predicate<SymbolFile>> KEYS = Map.of('r', SymbolFile::descend, 'l', SymbolFile::ascend,
            'd', SymbolFile::next, 'u', SymbolFile::previous, '>', SymbolFile::nextPage, '<', SymbolFile::previousPage);

    /** Presses right, left, down, up and the page keys. @return a "+" for each that did something */
    private static String press(SymbolFile file, String keys) {
        return keys.chars().mapToObj(key -> KEYS.get((char) key).test(file) ? "+" : "-").collect(Collectors.joining());
    }

    /** Keys, what they do, and afterwards the list with focus and its current item. */
    @ParameterizedTest
    @CsvSource({
        "lu, --, 小, Ａ Ｂ, Ａ", "dd, +-, 小, Ａ Ｂ, Ｂ", "dr, ++, 小／Ｂ, ◎, ◎", "rdru, ++-+, 小／Ａ, Ｘ ☆ ★ ○, Ｘ",
        "rrd, +++, 小／Ａ／Ｘ, △ ▽, ▽", "drl, +++, 小, Ａ Ｂ, Ｂ", "rrl, +++, 小／Ａ, Ｘ ☆ ★ ○, Ｘ", "rrlldr, ++++++, 小／Ｂ, ◎, ◎"
    })
    void browsesFromListToList(String keys, String moved, String title, String items, String current) {
        try (SymbolFile file = library.open("小")) {
            assertEquals(moved, press(file, keys));
            assertEquals(title, file.column().title().path());
            assertEquals(items, String.join(" ", texts(file.column().items())));
            Item item = file.column().current().orElseThrow();
            assertEquals(current, item.text());
            assertEquals(Optional.of(item).filter(Symbol.class::isInstance), file.decide());
            assertEquals(file.decide().flatMap(Symbol::codes), file.codes());
        }
    }

    @Test
    void positionShowsTheTitlesAboveTooOrLeavesTheListsAsTheyWere() {
        try (SymbolFile file = library.open("小")) {
            assertTrue(file.column().titles().get(0).hasChildren());
            file.position(Title.of("小／Ａ／Ｘ"));
            file.select(1);
            assertEquals(-1, assertRefused(Reason.NO_SUCH_TITLE, () -> file.position(Title.of("小／Ｚ"))).code());
            assertEquals(List.of("小", "小／Ａ", "小／Ａ／Ｘ"), shown(file));
            assertEquals(Optional.of(Symbol.of("▽")), file.decide());
            assertEquals("小／Ａ／Ｘ", file.column(2).current().orElseThrow().toString());
            file.focus(1);
            file.position(Title.of("小／Ａ／Ｘ"));
            assertEquals(Optional.of(Symbol.of("△")), file.decide());
        }
    }

    @Test
    void aFileWithoutTitlesHasNoneButItsOwn() throws IOException {
        try (SymbolFile file = library.create("空")) {
            assertRefused(Reason.NO_SUCH_TITLE, () -> file.position(Title.of("空／無")));
            file.position(Title.of("空"));
            assertEquals("空", file.title().path());
            file.save();
        }
        assertEquals("〈記号〉\n名称=空\n", Files.readString(common.resolve("@0000000.kig"), EUC));
    }

    /** Parents that are missing, names that begin with another, a line of two brackets. */
    @Test
    void everyListNamesWhatItShowsAfterAnyWalk() throws IOException {
        write("odd.kig", "奇", "Ａ=☆", "ＡＢ=★", "ＡＢ／Ｃ=○", "Ｚ／Ｙ=◎", "Ｚ／Ｙ／Ｖ／Ｕ=△", "Ｂ／Ｐ］［Ｑ=▽");
        try (SymbolFile file = library.open("奇")) {
            Map<Title, List<Item>> contents = new HashMap<>();
            List<Title> titles = file.titles();
            for (Title title : titles) {
                file.position(title);
                contents.put(title, file.column().items());
            }
            assertEquals(List.of("Ａ", "ＡＢ"), texts(contents.get(Title.of("奇"))));
            assertEquals(List.of("△"), texts(contents.get(Title.of("奇／Ｚ／Ｙ／Ｖ／Ｕ"))));
            Random random = new Random(8);
            for (int step = 0; step < 2000; step++) {
                int items = file.column().items().size();
                if (items > 0) file.select(random.nextInt(items));
                if (random.nextInt(4) == 0) file.position(titles.get(random.nextInt(titles.size())));
                else press(file, random.nextInt(3) == 0 ? "l" : "r");
                for (Column column : file.columns()) {
                    boolean own = column.number() == 1 || !column.title().equals(titles.get(0));
                    List<Item> expected = own ? contents.getOrDefault(column.title(), List.of()) : column.items();
                    assertEquals(expected, column.items(), step + ": " + shown(file));
                }
            }
        }
    }

    @Test
    void aTitleWithoutItsParentIsShownAndEdited() throws IOException {
        write("orphan.kig", "孤", "Ａ=☆", "Ｚ／Ｙ=★○", "Ｚ／Ｙ／Ｗ=△", "Ｖ／Ｕ=▽");
        try (SymbolFile file = library.open("孤")) {
            file.position(Title.of("孤／Ｚ／Ｙ"));
            assertEquals(List.of("孤", "孤／Ｚ", "孤／Ｚ／Ｙ"), shown(file));
            assertEquals(List.of("Ａ"), texts(file.column(1).items()));
            assertEquals(List.of("Ｗ", "★", "○"), texts(file.column().items()));
            assertRefused(Reason.NO_SUCH_TITLE, () -> file.focus(2));
            file.layOut(new Layout("", 1, 0, 0));
            assertEquals("++", press(file, ">>"));
            assertEquals(Optional.of(Symbol.of("○")), file.decide());
            file.setSymbols(List.of(Symbol.of("■"), Symbol.of("□")));
            assertEquals(2, file.column().currentIndex());
            file.renameTitle("Ｘ");
            file.addTitle("Ｔ");
            assertEquals(List.of("Ｗ", "Ｔ", "■", "□"), texts(file.column().items()));
            file.select(0);
            assertEquals("+", press(file, "r"));
            assertEquals(List.of("孤", "孤／Ｚ", "孤／Ｚ／Ｘ", "孤／Ｚ／Ｘ／Ｗ"), shown(file));
            file.deleteTitle();
            assertEquals("+", press(file, "l")); // the list between is passed over
            assertEquals(List.of("孤"), shown(file));
            file.position(Title.of("孤／Ｖ／Ｕ"));
            file.deleteTitle();
            assertEquals(List.of("孤"), shown(file));
            assertEquals("[孤, 孤／Ａ, 孤／Ｚ／Ｘ, 孤／Ｚ／Ｘ／Ｔ]", file.titles().toString());
        }
    }

    @Test
    void pagesAndHeadersFollowTheLayout() throws IOException {
        write("pages.kig", "頁", "Ａ=" + "☆".repeat(11) + "★");
        String caption = "見出し".repeat(100);
        try (SymbolFile file = library.open("頁")) {
            file.layOut(new Layout(caption, 5, 4, 7));
            file.position(Title.of("頁／Ａ"));
            Column column = file.column();
            assertEquals(List.of("1: ", "2: ", "3: ", "4: ", "5: ", "1: "), column.headers().subList(0, 6));
            assertEquals(caption, column.caption());
            assertEquals(7, column.itemLength());
            assertEquals("++-+", press(file, ">>>d"));
            assertEquals(List.of("☆", "★"), texts(file.column().page()));
            assertEquals(Optional.of(Symbol.of("★")), file.decide());
            file.layOut(new Layout("", 3, 2, 0));
            assertEquals(9, file.column().pageFirst());
            assertEquals(11, file.column().currentIndex());
            assertEquals("+", press(file, "<"));
            assertEquals(6, file.column().currentIndex());
            file.layOut(new Layout("", 0, 3, 0)); // numbers go on, and outgrow the header
            assertEquals(List.of("9:", "10:", "11:", "12:"), file.column().headers().subList(8, 12));
            assertEquals("★", file.column().items().get(11).text());
            assertEquals("-", press(file, ">"));
        }
    }

    @Test
    void aListThatEndsEarlySaysSo() throws IOException {
        String[] titles = IntStream.range(0, 300).mapToObj(i -> "題".repeat(120) + i).toArray(String[]::new);
        write("wide.kig", "広", titles);
        for (int i = 0; i < titles.length; i++) titles[i] = "Ａ／" + titles[i];
        write("long.kig", "長", titles);
        try (SymbolFile file = library.open("広")) {
            assertTrue(file.cutShort());
        }
        try (SymbolFile file = library.open("長")) {
            assertFalse(file.cutShort());
            assertTrue(file.titles().size() < 301 && file.cutShort());
            file.position(Title.of("長"));
            assertFalse(file.cutShort());
            file.addTitle("Ａ");
            assertTrue(file.descend() && file.cutShort());
            file.layOut(new Layout("", 1, 0, 0));
            assertTrue(file.cutShort());
        }
    }
}
