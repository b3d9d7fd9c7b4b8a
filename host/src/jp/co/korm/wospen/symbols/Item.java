package jp.co.korm.wospen.symbols;

/** What stands in a list: a title or a symbol. */
public sealed interface Item permits Title, Symbol {
    /** {@return what a reader sees: the last part of a title's path, or the symbol} */
    String text();
}
