package jp.co.korm.wospen.symbols;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.ZikSym;
import jp.co.korm.wospen.ZikSymListBox;
import jp.co.korm.wospen.symbols.SymbolException.Reason;

/** The record behind {@link SymbolLibrary}: sets inputs, runs a command, reads outputs. */
final class Request {
    static final int DONE = 1;
    static final int FAILED = 0;
    static final int NOTHING_DONE = 2;
    static final int NOT_FOUND = -1;

    private static final int LONGEST_STRING = 32767;

    final ZikSym record = new ZikSym();
    private Command command;

    /**
     * Runs a command on {@code lpchString1} and what follows.
     *
     * @param strings without their NULs; those not given are empty
     * @throws IllegalArgumentException for a string that the library's 16-bit lengths cannot say
     */
    int run(Command command, byte[]... strings) {
        for (byte[] string : strings) {
            if (string.length > LONGEST_STRING) {
                throw new IllegalArgumentException(
                        "longer than " + LONGEST_STRING + " bytes: " + string.length);
            }
        }
        record.lpchString1 = string(strings, 0);
        record.lpchString2 = string(strings, 1);
        record.lpchString3 = string(strings, 2);
        record.lpchString4 = string(strings, 3);
        record.wDataStatus = 0;
        record.wDataUpdate = 0;
        record.cchMessage = 0;
        record.wVkey = command.code();
        this.command = command;
        return record.AccSym();
    }

    /** The string with a NUL; two at least, because set-attribute reads two bytes. */
    private static byte[] string(byte[][] strings, int index) {
        byte[] string = index < strings.length ? strings[index] : new byte[0];
        return Arrays.copyOf(string, string.length + 2);
    }

    /** The failure of the last command. */
    SymbolException failure(String action, int result) {
        return new SymbolException(action, reason(result), result, message(), null);
    }

    /** Why the last command failed. */
    Reason reason(int result) {
        return Reason.of(command, result, message());
    }

    /** Whether the last command did what it should, but could not fill a list after it. */
    boolean isUnfilled(int result) {
        return result == FAILED && reason(result) == Reason.CANNOT_READ;
    }

    /** Text of the last command; empty when it left none. */
    String message() {
        return record.cchMessage == 0 ? "" : SjisText.decode(record.lpchMessage);
    }

    /** Whether the last command, though done, had to end a list early. */
    boolean cutShort() {
        return Reason.of(command, DONE, message()) == Reason.TOO_DEEP;
    }

    Symbol result() {
        return new Symbol((record.lpchResult[0] & 0xFF) << 8 | record.lpchResult[1] & 0xFF);
    }

    List<Title> display() {
        List<Title> titles = new ArrayList<>();
        for (int at = 0; at < record.cchDisplay; ) {
            int end = endOfString(record.lpchDisplay, at);
            titles.add(new Title(Arrays.copyOfRange(record.lpchDisplay, at, end), false));
            at = end + 1;
        }
        return List.copyOf(titles);
    }

    int focus() {
        return record.wCurrentList;
    }

    void focus(int list) {
        record.wCurrentList = list;
    }

    /** Lays out all lists, with room for the caption in each. @return the result */
    int layOut(Layout layout) {
        byte[] caption = SjisText.encode(layout.caption());
        for (ZikSymListBox list : record.tListBox) {
            if (list.lpchLBTitle.length <= caption.length) list.lpchLBTitle = new byte[caption.length + 1];
        }
        return run(Command.SET_ATTRIBUTE, caption, number(layout.itemsPerPage()),
                number(layout.headerSetting()), number(layout.itemLength()));
    }

    private static byte[] number(int value) {
        return new byte[] {(byte) (value >> 8), (byte) value};
    }

    Title level(int list) {
        byte[] level = box(list).lpchLBLevel;
        return new Title(Arrays.copyOf(level, endOfString(level, 0)), true);
    }

    void level(int list, Title title) {
        byte[] sjis = title.sjis();
        byte[] level = box(list).lpchLBLevel;
        System.arraycopy(sjis, 0, level, 0, sjis.length);
        level[sjis.length] = 0;
    }

    SymbolCodes codes() {
        byte[] info = box(focus()).lpchLBItemInfo;
        return new SymbolCodes(ascii(info, 0), ascii(info, 5), ascii(info, 10));
    }

    private static String ascii(byte[] bytes, int from) {
        return SjisText.decode(Arrays.copyOfRange(bytes, from, bytes.length));
    }

    int total(int list) {
        return box(list).cchLBItemTotal;
    }

    /** Index of a list's current item; -1 when there is none. */
    int cursor(int list) {
        int index = box(list).cchLBItemNum == 0 ? -1 : place(list);
        return index < total(list) ? index : -1;
    }

    /** Where a list's cursor stands, also behind its items or, in a list without one, before them. */
    int place(int list) {
        ZikSymListBox box = box(list);
        return box.cchLBItemPageFirst + Math.max(box.cchLBItemNum, 1) - 2;
    }

    /** Puts a list's cursor on an item, the nearest that it has, and its page where that item is. */
    void cursor(int list, int wanted) {
        ZikSymListBox box = box(list);
        int index = Math.max(0, Math.min(wanted, box.cchLBItemTotal - 1));
        int lines = box.cchLBItemNumMax == 0 ? Integer.MAX_VALUE : box.cchLBItemNumMax;
        box.cchLBItemPageFirst = index / lines * lines + 1;
        box.cchLBItemNum = index % lines + 1;
    }

    /** Puts a list's cursor on a title when the list has it. */
    void pointAt(int list, Title title) {
        int index = column(list).items().indexOf(title);
        if (index >= 0) cursor(list, index);
    }

    Column column(int list) {
        ZikSymListBox box = box(list);
        List<Item> items = new ArrayList<>(box.cchLBItemTotal);
        List<String> headers = new ArrayList<>(box.cchLBItemTotal);
        int number = 0;
        boolean symbols = false;
        int at = 0;
        for (int i = 0; i < box.cchLBItemTotal; i++) {
            int attribute = box.lpchLBListInfo[i];
            if ((attribute & ZikSymListBox.LBINFO_SYMBOL) != 0 && !symbols) {
                symbols = true; // symbols are counted by themselves
                number = 0;
            }
            number++;
            int text = at + headerBytes(box.cchLBItemHead, number);
            int end = endOfString(box.lpchLBList, text);
            headers.add(SjisText.decode(Arrays.copyOfRange(box.lpchLBList, at, text)));
            byte[] sjis = Arrays.copyOfRange(box.lpchLBList, text, end);
            boolean hasChildren = (attribute & ZikSymListBox.LBINFO_CHILD) != 0;
            items.add(symbols ? symbol(sjis) : new Title(sjis, hasChildren));
            at = end + (box.cchLBItemHead == 0 ? 1 : 2);
            if (number == box.cchLBItemNumMax) number = 0;
        }
        return new Column(list, level(list), SjisText.decode(box.lpchLBTitle), items, headers, cursor(list),
                Math.max(0, box.cchLBItemPageFirst - 1),
                box.cchLBItemNumMax, box.cchLBItemLenMax);
    }

    private static Symbol symbol(byte[] sjis) {
        return new Symbol((sjis[0] & 0xFF) << 8 | (sjis.length > 1 ? sjis[1] & 0xFF : 0));
    }

    /** Bytes before an item's text; a number that is too long for the setting takes its room. */
    private static int headerBytes(int setting, int number) {
        int digits = String.valueOf(number).length();
        if (setting < 2) return 0;
        return setting == 2 ? digits : Math.max(setting - 1, digits + 1);
    }

    private static int endOfString(byte[] bytes, int from) {
        int end = from;
        while (end < bytes.length && bytes[end] != 0) end++;
        return end;
    }

    private ZikSymListBox box(int list) {
        return record.tListBox[list - 1];
    }
}
