package jp.co.korm.wospen.symbols;

import static org.junit.jupiter.api.Assertions.*;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Locale;
import java.util.Optional;
import java.util.regex.MatchResult;
import java.util.regex.Pattern;
import java.util.stream.IntStream;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.ZikSym;
import jp.co.korm.wospen.ZikSymListBox;
import jp.co.korm.wospen.symbols.SymbolException.Reason;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class ValuesTest {
    private static List<MatchResult> matches(String pattern, String source) throws IOException {
        String text = Files.readString(Path.of(System.getProperty("accsym.sources")).resolve(source));
        return Pattern.compile(pattern).matcher(text).results().toList();
    }

    @Test
    void sizesCodesAndMessagesAreThoseOfTheNativeSide() throws IOException {
        List<Integer> sizes = matches("#define ACC_SIZE_\\w+ \\(?(\\d+)( \\+ 2)?", "include/accdata.h").stream()
                .map(size -> Integer.parseInt(size.group(1)) + (size.group(2) == null ? 0 : 2)).toList();
        ZikSym record = new ZikSym();
        ZikSymListBox list = record.tListBox1;
        byte[][] buffers = {record.lpchMessage, record.lpchResult, record.lpchDisplay, list.lpchLBLevel, list.lpchLBList,
            list.lpchLBListInfo, list.lpchLBItemInfo};
        assertEquals(Arrays.stream(buffers).map(buffer -> buffer.length).toList(), sizes);

        List<Integer> codes = matches("ACC_VKEY_\\w+ = (\\d+)", "include/accdata.h").stream()
                .map(code -> Integer.valueOf(code.group(1))).sorted().toList();
        assertEquals(codes, Arrays.stream(Command.values()).map(Command::code).sorted().toList());

        List<Integer> numbers = matches("slot<\"([^\"]*)\">", "record/message.cpp").stream().limit(20)
                .map(text -> Reason.of(Command.GET_EDIT, 0, text.group(1)).messageNumber().orElse(-1)).toList();
        assertEquals(IntStream.range(0, 20).boxed().toList(), numbers);
    }

    /** A path, its last part and its parent; メ is 8381 and before "^" looks like a separator. */
    @ParameterizedTest
    @CsvSource({"小, 小,", "小／Ａ／Ｘ, Ｘ, 小／Ａ", "小／メ^Ｘ, メ^Ｘ, 小"})
    void aTitleIsCutAtItsLastSeparator(String path, String text, String parent) {
        assertEquals(text, Title.of(path).text());
        assertEquals(Optional.ofNullable(parent).map(Title::of), Title.of(path).parent());
    }

    @ParameterizedTest
    @CsvSource({"小／Ａ／Ｘ, 小, true", "小／ＡＢＣ, 小／Ａ, false", "小, 小, false", "大／Ａ, 小, false"})
    void aTitleIsBelowAnotherBehindASeparator(String path, String other, boolean below) {
        assertEquals(below, Title.of(path).isBelow(Title.of(other)));
    }

    /** The borders between the halves of rows and of the code; in a locale that has digits of its own. */
    @ParameterizedTest
    @CsvSource({
        "8140, 2121, 0101", "817E, 215F, 0163", "8180, 2160, 0164", "829F, 2421, 0401",
        "84BE, 2840, 0832", "9FFC, 5E7E, 6294", "E040, 5F21, 6301"
    })
    void symbolsKnowTheirCodesInEveryLocale(String sjis, String jis, String kuten) {
        Locale locale = Locale.getDefault();
        Locale.setDefault(Locale.forLanguageTag("ar-EG-u-nu-arab"));
        try {
            assertEquals(new SymbolCodes(sjis, jis, kuten), new Symbol(Integer.parseInt(sjis, 16)).codes().orElseThrow());
            var e = assertThrows(IllegalArgumentException.class, () -> Editor.lines(List.of(new Symbol(7))));
            assertEquals("no double-byte character: 0007 at 0", e.getMessage());
        } finally {
            Locale.setDefault(locale);
        }
    }

    @Test
    void aFileTitleIsNeverCut() {
        Title file = Title.of("Ａ／Ｂ");
        assertEquals(file, Title.of("Ａ／Ｂ／Ｃ").parentIn(file));
        assertEquals(file, file.parentIn(file));
    }

    @Test
    void valuesAreReadableAndDoNotChange() {
        assertEquals("☆ 8199", Symbol.of("☆").toString());
        assertEquals("0A41", new Symbol(0x0A41).toString());
        List<Item> items = new ArrayList<>(List.of(Symbol.of("☆")));
        Column column = new Column(1, Title.of("小"), "", items, List.of(""), 0, 0, 9, 64);
        items.clear();
        assertEquals(Optional.of(Symbol.of("☆")), column.current());
    }
}
