package jp.co.korm.wospen.symbols;

import java.util.Objects;
import java.util.OptionalInt;
import jp.co.korm.wospen.Command;
import jp.co.korm.wospen.ZikSym;

/** A command that the library refused or could not do. */
public class SymbolException extends RuntimeException {
    private static final long serialVersionUID = 1;

    /** Why a command failed: the library's messages in the order of their numbers, and more. */
    public enum Reason {
        /** Message 0: no symbol file bears the title, or it may not be written. */
        NO_SUCH_FILE("記号ファイルが存在しません。", "the symbol file does not exist"),
        /** Message 1: a temp file, or the file to save to, could not be made. */
        CANNOT_OPEN("ファイルのオープンに失敗しました。", "a file could not be opened"),
        /** Message 2. */
        BAD_ARGUMENT("引数エラー", "an argument is not acceptable"),
        /** Message 3. */
        NO_DETAILS("詳細情報はありません。", "there is no detailed information"),
        /** Message 4. */
        NO_MEMORY_GIVEN("メモリが割り当てられていません。", "memory has not been allocated"),
        /** Message 5. */
        ALREADY_OPEN("ファイルが開いています。", "a file is already open"),
        /** Message 6: not in the format, or beyond its limits. */
        NOT_A_SYMBOL_FILE("記号ファイルではありません。", "not a symbol file"),
        /** Message 7; of create and save: the directories could not be read whole. */
        CANNOT_READ("ファイルの読み込みに失敗しました。", "reading a file failed"),
        /** Message 8; of a save also: what would be written would not read back as it is. */
        CANNOT_WRITE("ファイルの書き込みに失敗しました。", "writing a file failed"),
        /** Message 9: more than ten levels. */
        TOO_DEEP("リストボックスのメモリが足りません。", "the lists cannot hold it"),
        /** Message 10. */
        NO_FILE_OPEN("ファイルが開いていません。", "no file is open"),
        /** Message 11. */
        OUT_OF_MEMORY("メモリの確保に失敗しました。", "allocating memory failed"),
        /** Message 12. */
        TITLE_EXISTS("記号タイトルが既に存在します。", "the symbol title already exists"),
        /** Message 13: a title or symbols that a symbol file cannot hold. */
        NOT_ACCEPTED("入力エラーです。", "the input is not acceptable"),
        /** Message 14. */
        PARENT_STAYS("親タイトルは削除できません。", "a parent title cannot be deleted"),
        /** Message 15. */
        PARENT_HAS_NO_SYMBOLS("親タイトルには登録できません。", "symbols cannot be registered under a parent title"),
        /** Message 16. */
        CANNOT_CONVERT("記号ファイルのコンバートに失敗しました。", "converting the symbol file failed"),
        /** Message 17. */
        STANDARD_NOT_SAVED("標準の記号での保存はできません。", "cannot save under the title of the standard set"),
        /** Message 18; also a save that would replace a file that was not opened. */
        FILE_EXISTS("記号ファイルが既に存在します。", "the symbol file already exists"),
        /** Message 19. */
        STANDARD_NOT_DELETED("標準の記号は削除できません。", "the standard set cannot be deleted"),

        /** The open file has no such title. */
        NO_SUCH_TITLE("there is no such title"),
        /** A save broke off; what lay on disk is as it was. */
        SAVE_BROKE_OFF("writing broke off; the file on disk is as it was"),
        /** The virtual machine could not hand out an array; nothing was done. */
        NOT_RUN("the virtual machine could not hand out an array, nothing was done"),
        /** The program directory is not there or cannot be read. */
        NO_PROGRAM_DIRECTORY("the program directory cannot be read"),
        /** The common directory, where new files are made, is not there. */
        NO_COMMON_DIRECTORY("the common directory is not there"),
        /** The file on disk is not the one that was opened; nothing was saved. */
        CHANGED_ON_DISK("the file on disk has changed since it was opened"),
        /** A message or result that this version does not know. */
        OTHER("unknown result");

        private static final int MESSAGES = 20;

        private final String japanese;
        private final String english;

        Reason(String japanese, String english) {
            this.japanese = japanese;
            this.english = english;
        }

        Reason(String english) {
            this(null, english);
        }

        /**
         * {@return the number of the library's message, 0 to 19; empty for a reason that has none}
         */
        public OptionalInt messageNumber() {
            return ordinal() < MESSAGES ? OptionalInt.of(ordinal()) : OptionalInt.empty();
        }

        /** The reason behind a result and its message, which may be empty. */
        static Reason of(Command command, int result, String message) {
            for (Reason reason : values()) {
                if (message.equals(reason.japanese)) return reason;
            }
            if (!message.isEmpty()) return OTHER;
            if (result == Request.FAILED) return NOT_RUN;
            if (result != Request.NOT_FOUND) return OTHER;
            return switch (command) {
                case FILE_SAVE -> SAVE_BROKE_OFF;
                case FILE_NEW -> OUT_OF_MEMORY;
                default -> NO_SUCH_TITLE;
            };
        }
    }

    /** Why. */
    private final Reason reason;
    /** Result of the command. */
    private final int code;
    /** The library's text. */
    private final String japanese;

    /** @param details in place of the reason's own words; null: those */
    SymbolException(String action, Reason reason, int code, String japanese, String details) {
        super(action + ": " + Objects.requireNonNullElse(details, reason.english)
                + (japanese.isEmpty() ? "" : " (" + japanese + ")"));
        this.reason = reason;
        this.code = code;
        this.japanese = japanese;
    }

    /** {@return why the command failed} */
    public Reason reason() {
        return reason;
    }

    /** {@return the result of {@link ZikSym#AccSym()}: 0, 2, 4 or -1} */
    public int code() {
        return code;
    }

    /** {@return the library's own text; empty when it gave none} */
    public String japanese() {
        return japanese;
    }
}
