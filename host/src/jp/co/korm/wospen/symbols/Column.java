package jp.co.korm.wospen.symbols;

import java.util.List;
import java.util.Objects;
import java.util.Optional;

/**
 * One list box as it was when {@link SymbolFile} was asked for it; it does not change.
 *
 * @param number 1 to 10
 * @param title the title whose contents it shows
 * @param caption caption of {@link Layout}
 * @param items child titles, then symbols, all of them and not only the page. After a title
 *     the library also lists what lies below a title that merely begins with its name;
 *     {@link Title#isBelow} tells
 * @param headers what stands before each item by {@link Layout#headerSetting}, such as "1: "
 * @param currentIndex index of the current item; -1 when there is none
 * @param pageFirst index of the first item of the page
 * @param itemsPerPage lines of a page; 0: not paged
 * @param itemLength item length of {@link Layout}
 */
public record Column(int number, Title title, String caption, List<Item> items, List<String> headers,
        int currentIndex, int pageFirst, int itemsPerPage, int itemLength) {
    /**
     * As the library's list is read.
     *
     * @param number as above
     * @param title as above
     * @param caption as above
     * @param items copied
     * @param headers copied
     * @param currentIndex as above
     * @param pageFirst as above
     * @param itemsPerPage as above
     * @param itemLength as above
     */
    public Column {
        Objects.requireNonNull(title, "title");
        Objects.requireNonNull(caption, "caption");
        items = List.copyOf(items);
        headers = List.copyOf(headers);
    }

    /** {@return the current item} */
    public Optional<Item> current() {
        return currentIndex < 0 ? Optional.empty() : Optional.of(items.get(currentIndex));
    }

    /** {@return the items of the page} */
    public List<Item> page() {
        int end = itemsPerPage == 0 ? items.size() : Math.min(items.size(), pageFirst + itemsPerPage);
        return items.subList(Math.min(pageFirst, end), end);
    }

    /** {@return the titles among the items} */
    public List<Title> titles() {
        return items.stream().filter(Title.class::isInstance).map(Title.class::cast).toList();
    }

    /** {@return the symbols among the items} */
    public List<Symbol> symbols() {
        return items.stream().filter(Symbol.class::isInstance).map(Symbol.class::cast).toList();
    }
}
