import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.ZikSym;
import jp.co.korm.wospen.ZikSymListBox;

/**
 * What one command costs across the bridge, against a native that only gets and releases the
 * same 59 arrays. Each figure is the least of several rounds, in microseconds a call.
 *
 * <p>The command asks for unsaved edits, which is next to nothing, so what stays is the bridge.
 */
public class BridgeBench {
    private static final int ROUNDS = 7;

    private BridgeBench() {}

    static native void pinOnly(byte[][] arrays);

    public static void main(String[] arguments) {
        System.load(Path.of(arguments[0]).toAbsolutePath().toString());
        System.out.printf("%s %s, %s, %d processors, %s%n", System.getProperty("java.vm.name"),
                System.getProperty("java.vm.version"), System.getProperty("os.arch"),
                Runtime.getRuntime().availableProcessors(), arguments[1]);
        measure("buffers of the least sizes", new ZikSym(), 2_000);
        measure("buffers of 64 bytes", small(), 50_000);
    }

    private static ZikSym small() {
        ZikSym record = new ZikSym();
        record.lpchDisplay = new byte[64];
        for (ZikSymListBox list : record.tListBox) {
            list.lpchLBTitle = new byte[64];
            list.lpchLBLevel = new byte[64];
            list.lpchLBList = new byte[64];
            list.lpchLBListInfo = new byte[64];
        }
        return record;
    }

    private static void measure(String name, ZikSym record, int calls) {
        byte[][] arrays = arrays(record);
        long bytes = Arrays.stream(arrays).mapToLong(array -> array.length).sum();
        record.wVkey = Command.GET_EDIT.code();
        double pins = Double.MAX_VALUE;
        double command = Double.MAX_VALUE;
        for (int round = 0; round < ROUNDS; round++) {
            pins = Math.min(pins, microseconds(calls, () -> pinOnly(arrays)));
            command = Math.min(command, microseconds(calls, record::AccSym));
        }
        System.out.printf("%s, %d bytes in %d arrays%n  get and release %9.2f us%n"
                + "  AccSym          %9.2f us, %.2f times as long, %.2f us more%n",
                name, bytes, arrays.length, pins, command, command / pins, command - pins);
    }

    private static double microseconds(int calls, Runnable call) {
        long start = System.nanoTime();
        for (int i = 0; i < calls; i++) call.run();
        return (System.nanoTime() - start) / 1e3 / calls;
    }

    private static byte[][] arrays(ZikSym record) {
        List<byte[]> arrays = new ArrayList<>(List.of(record.lpchString1, record.lpchString2,
                record.lpchString3, record.lpchString4, record.lpchString5, record.lpchResult,
                record.lpchDisplay, record.lpchMessage, record.lpchStatus));
        for (ZikSymListBox list : record.tListBox) {
            arrays.addAll(List.of(list.lpchLBTitle, list.lpchLBLevel, list.lpchLBList,
                    list.lpchLBListInfo, list.lpchLBItemInfo));
        }
        return arrays.toArray(byte[][]::new);
    }
}
