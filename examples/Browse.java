import java.nio.file.Path;
import jp.co.korm.wospen.symbols.Item;
import jp.co.korm.wospen.symbols.Symbol;
import jp.co.korm.wospen.symbols.SymbolFile;
import jp.co.korm.wospen.symbols.SymbolLibrary;
import jp.co.korm.wospen.symbols.Title;

/**
 * Walks the standard set as a user would, title by title, and prints what it holds.
 *
 * <pre>
 * javac -cp kigou.jar Browse.java
 * java -cp kigou.jar:. Browse DIRECTORY [FILE-TITLE]
 * </pre>
 */
public class Browse {
    public static void main(String[] arguments) {
        if (arguments.length < 1) {
            System.err.println("usage: Browse DIRECTORY [FILE-TITLE]");
            System.exit(2);
        }
        Path directory = Path.of(arguments[0]);
        String fileTitle = arguments.length > 1 ? arguments[1] : SymbolLibrary.STANDARD_TITLE;
        try (SymbolLibrary library = SymbolLibrary.acquire(directory, directory);
                SymbolFile file = library.open(fileTitle)) {
            System.out.println(file.title());
            int symbols = walk(file);
            System.out.println(symbols + " symbols below " + file.titles().size() + " titles");
        }
    }

    /** Prints the list with focus and, below each title that belongs to it, that title's list. */
    private static int walk(SymbolFile file) {
        Title shown = file.column().title();
        StringBuilder line = new StringBuilder();
        int count = 0;
        int index = 0;
        for (Item item : file.column().items()) {
            file.select(index++);
            if (item instanceof Title title && title.isBelow(shown)) {
                System.out.println("  ".repeat(file.focus()) + title.text());
                if (file.descend()) {
                    count += walk(file);
                    file.ascend();
                }
            } else if (item instanceof Symbol) {
                line.append(file.decide().orElseThrow().text());
                count++;
            }
        }
        if (count > 0 && !line.isEmpty()) System.out.println("  ".repeat(file.focus()) + line);
        return count;
    }
}
