package jp.co.korm.wospen;

import java.util.OptionalInt;

/** A command that the library refused or could not do. */
public class SymbolException extends RuntimeException {
    private static final long serialVersionUID = 1;

    /** The library's messages by number, with what they say in English. */
    private static final String[][] MESSAGES = {
        {"記号ファイルが存在しません。", "the symbol file does not exist"},
        {"ファイルのオープンに失敗しました。", "a file could not be opened"},
        {"引数エラー", "an argument is not acceptable"},
        {"詳細情報はありません。", "there is no detailed information"},
        {"メモリが割り当てられていません。", "memory has not been allocated"},
        {"ファイルが開いています。", "a file is already open"},
        {"記号ファイルではありません。", "not a symbol file"},
        {"ファイルの読み込みに失敗しました。", "reading a file failed"},
        {"ファイルの書き込みに失敗しました。", "writing a file failed"},
        {"リストボックスのメモリが足りません。", "not enough list-box memory"},
        {"ファイルが開いていません。", "no file is open"},
        {"メモリの確保に失敗しました。", "allocating memory failed"},
        {"記号タイトルが既に存在します。", "the symbol title already exists"},
        {"入力エラーです。", "the input is not acceptable"},
        {"親タイトルは削除できません。", "a parent title cannot be deleted"},
        {"親タイトルには登録できません。", "symbols cannot be registered under a parent title"},
        {"記号ファイルのコンバートに失敗しました。", "converting the symbol file failed"},
        {"標準の記号での保存はできません。", "cannot save under the title of the standard set"},
        {"記号ファイルが既に存在します。", "the symbol file already exists"},
        {"標準の記号は削除できません。", "the standard set cannot be deleted"},
    };

    private final int code;
    private final String japanese;
    private final int number;

    SymbolException(String action, int code, String japanese) {
        super(action + ": " + explanation(code, japanese));
        this.code = code;
        this.japanese = japanese;
        this.number = numberOf(japanese);
    }

    /** Result of {@link ZikSym#AccSym()}: 0, 2, 4 or -1. */
    public int code() {
        return code;
    }

    /** The library's text; empty when it gave none. */
    public String japanese() {
        return japanese;
    }

    /** Number of that text, 0 to 19. */
    public OptionalInt messageNumber() {
        return number < 0 ? OptionalInt.empty() : OptionalInt.of(number);
    }

    static int numberOf(String japanese) {
        for (int i = 0; i < MESSAGES.length; i++) {
            if (MESSAGES[i][0].equals(japanese)) return i;
        }
        return -1;
    }

    private static String explanation(int code, String japanese) {
        int number = numberOf(japanese);
        if (number >= 0) return MESSAGES[number][1] + " (" + japanese + ")";
        if (!japanese.isEmpty()) return japanese;
        if (code == Request.NOT_FOUND) return "there is no such title, or writing failed";
        return "result " + code + " without a message";
    }
}
