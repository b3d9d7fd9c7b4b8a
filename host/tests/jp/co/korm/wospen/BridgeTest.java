package jp.co.korm.wospen;

import static org.junit.jupiter.api.Assertions.assertAll;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.lang.reflect.Field;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import java.util.concurrent.atomic.AtomicBoolean;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

/** The record and its one native, without anything on top. */
class BridgeTest {
    private final Workspace workspace = new Workspace().small();
    private final ZikSym record = new ZikSym();

    @AfterEach
    void close() {
        workspace.run(new ZikSym(), Command.FILE_CLOSE, "");
        layOut(new ZikSym(), 4); // the layout outlives a record
        workspace.close();
    }

    private static void layOut(ZikSym record, int headerSetting) {
        record.wVkey = Command.SET_ATTRIBUTE.code();
        record.lpchString2 = new byte[] {0, 9};
        record.lpchString3 = new byte[] {(byte) (headerSetting >> 8), (byte) headerSetting};
        record.lpchString4 = new byte[] {0, 64};
        assertEquals(1, record.AccSym());
    }

    @Test
    void numbersAreCutToSixteenBitsAndComeBackWithoutSign() throws Exception {
        for (Object holder : holders()) {
            for (Field field : fields(holder, int.class)) field.setInt(holder, 100_000);
        }
        record.wVkey = -65536 + Command.GET_EDIT.code();
        assertEquals(2, record.AccSym());
        Map<String, Integer> others = Map.of("wVkey", Command.GET_EDIT.code(), "cchMessage", 0);
        for (Object holder : holders()) {
            for (Field field : fields(holder, int.class)) {
                assertEquals(others.getOrDefault(field.getName(), 100_000 - 65536), field.getInt(holder), field.getName());
            }
        }
    }

    @Test
    void aMissingArrayOrListBoxLeavesTheCommandUndone() throws Exception {
        record.wVkey = Command.FILE_CLOSE.code(); // would leave a message
        int positions = 0;
        for (Object holder : holders()) {
            List<Field> fields = new ArrayList<>(fields(holder, byte[].class));
            fields.addAll(fields(holder, ZikSymListBox.class));
            for (Field field : fields) {
                Object value = field.get(holder);
                field.set(holder, null);
                assertEquals(0, record.AccSym(), field.getName());
                assertEquals(0, record.cchMessage, field.getName());
                field.set(holder, value);
                positions++;
            }
        }
        assertEquals(59 + 10, positions);
        assertEquals(0, record.AccSym());
        assertEquals("ファイルが開いていません。", SjisText.decode(record.lpchMessage));
    }

    /** Has fields of the same names, which the library must not see. */
    static class Hiding extends ZikSym {
        public long wVkey = Command.FILE_CLOSE.code();
        public byte[] lpchMessage;
        public ZikSymListBox tListBox1;
    }

    @Test
    void aSubclassThatHidesFieldsIsReadThroughTheRecordsOwn() {
        Hiding hiding = new Hiding();
        workspace.open(hiding, "小");
        assertEquals(1, hiding.wCurrentList);
        assertEquals(2, ((ZikSym) hiding).tListBox1.cchLBItemTotal);
        assertEquals(Command.FILE_CLOSE.code(), hiding.wVkey);
        assertEquals(0, workspace.run(hiding, Command.FILE_OPEN, "小"));
        assertEquals(5, SymbolException.numberOf(SjisText.decode(((ZikSymAccdata) hiding).lpchMessage)));
    }

    @Test
    void theCollectorMayRunBetweenAndDuringCalls() throws InterruptedException {
        workspace.open(record, "小");
        byte[] list = record.tListBox1.lpchLBList.clone();
        AtomicBoolean stop = new AtomicBoolean();
        Thread collector = new Thread(() -> {
            while (!stop.get()) System.gc();
        });
        collector.start();
        try {
            for (int i = 0; i < 300; i++) {
                assertEquals(1, workspace.run(record, Command.SET_POSITION, "小／Ａ"));
                assertEquals(1, workspace.run(record, Command.TREE_TITLES, ""));
                assertArrayEquals(list, record.tListBox1.lpchLBList);
                assertEquals("小", SjisText.decode(record.lpchDisplay));
            }
        } finally {
            stop.set(true);
            collector.join();
        }
    }

    @Test
    void aHundredThousandCallsLeaveNothingBehind() throws IOException {
        // Large enough for the small file, so that many calls stay quick.
        record.lpchDisplay = new byte[1024];
        for (ZikSymListBox list : record.tListBox) {
            list.lpchLBList = new byte[1024];
            list.lpchLBListInfo = new byte[1024];
        }
        callMany(10_000);
        long memory = residentKilobytes();
        long descriptors = descriptors();
        callMany(100_000);
        assertEquals(descriptors, descriptors());
        long growth = residentKilobytes() - memory;
        assertTrue(growth < 16 * 1024, "grew by " + growth + " kB");
    }

    private void callMany(int calls) {
        for (int i = 0; i < calls; i += 100) {
            workspace.open(record, "小");
            for (int k = 0; k < 24; k++) {
                assertEquals(1, workspace.run(record, Command.SET_POSITION, "小／Ａ／Ｘ"));
                assertEquals(1, workspace.run(record, Command.DECISION, ""));
                assertEquals(1, workspace.run(record, Command.GET_INFO, ""));
                assertEquals(-1, workspace.run(record, Command.SET_POSITION, "小／Ｚ"));
            }
            record.tListBox1.lpchLBTitle = null;
            assertEquals(0, workspace.run(record, Command.GET_EDIT, ""));
            record.tListBox1.lpchLBTitle = new byte[16];
            assertEquals(1, workspace.run(record, Command.FILE_CLOSE, ""));
            assertEquals(2, workspace.run(record, Command.GET_EDIT, ""));
        }
    }

    private static long residentKilobytes() throws IOException {
        System.gc();
        String status = Files.readString(Path.of("/proc/self/status"));
        return Long.parseLong(status.replaceAll("(?s).*VmRSS:\\s*(\\d+).*", "$1"));
    }

    private static long descriptors() throws IOException {
        try (var files = Files.list(Path.of("/proc/self/fd"))) {
            return files.count();
        }
    }

    private static final int CANARIES = 64;
    private static final byte CANARY = (byte) 0xA5;

    @ParameterizedTest
    @ValueSource(ints = {0, 1, 4, 300})
    void theLargestListsStayInsideTheirBuffers(int headerSetting) throws Exception {
        String longTitle = "長".repeat(127);
        String deep = IntStream.rangeClosed(1, 9).mapToObj(level -> "深".repeat(26) + level).collect(Collectors.joining("／"));
        List<String> blocks = new ArrayList<>(List.of("多=" + "☆".repeat(16000)));
        for (int end = 27; end > 0; end = deep.indexOf('／', end + 1)) blocks.add(deep.substring(0, end));
        blocks.add(deep + "=" + "★".repeat(16000));
        for (int i = 0; i < 300; i++) blocks.add(String.format("%s%03d", "題".repeat(120), i));
        workspace.file("large.kig", "大", blocks.toArray(String[]::new));
        for (int i = 0; i < 300; i++) {
            workspace.file("many" + i + ".kig", String.format("%s%03d", longTitle.substring(2), i));
        }
        List<byte[]> guarded = new ArrayList<>();
        for (Object holder : holders()) {
            for (Field field : fields(holder, byte[].class)) {
                byte[] array = (byte[]) field.get(holder);
                byte[] larger = Arrays.copyOf(array, array.length + CANARIES);
                Arrays.fill(larger, array.length, larger.length, CANARY);
                field.set(holder, larger);
                if (!field.getName().startsWith("lpchString")) guarded.add(larger);
            }
        }
        layOut(record, headerSetting);
        workspace.open(record, "大");
        assertCutShort("titles of list 1");
        assertEquals(1, workspace.run(record, Command.SET_POSITION, "大／" + deep));
        assertEquals(10, record.wCurrentList);
        assertEquals(1, workspace.run(record, Command.GET_INFO, ""));
        assertEquals(1, workspace.run(record, Command.DECISION, ""));
        assertEquals(1, workspace.run(record, Command.SET_POSITION, "大／多"));
        if (headerSetting > 1) assertCutShort("symbols");
        assertEquals(1, workspace.run(record, Command.NEXT_BLOCK, ""));
        assertEquals(1, workspace.run(record, Command.TREE_TITLES, ""));
        assertEquals(1, workspace.run(record, Command.FILE_TITLES, ""));
        assertCutShort("file titles");
        assertTrue(record.cchDisplay > 65535 - 257, "display " + record.cchDisplay);
        assertAll(guarded.stream().map(array -> () -> {
            for (int i = array.length - CANARIES; i < array.length; i++) assertEquals(CANARY, array[i]);
        }));
    }

    private void assertCutShort(String what) {
        assertEquals("リストボックスのメモリが足りません。", SjisText.decode(record.lpchMessage), what);
    }

    private List<Object> holders() {
        List<Object> holders = new ArrayList<>(List.of(record));
        holders.addAll(List.of(record.tListBox));
        return holders;
    }

    /** The instance fields of a type that the library knows. */
    private static List<Field> fields(Object object, Class<?> type) {
        Class<?> declaring = object instanceof ZikSymListBox ? ZikSymListBox.class : ZikSymAccdata.class;
        return PartnersTest.instanceFields(declaring).stream().filter(field -> field.getType() == type).toList();
    }
}
