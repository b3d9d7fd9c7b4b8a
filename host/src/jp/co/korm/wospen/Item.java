package jp.co.korm.wospen;

/** What stands in a list: a title or a symbol. */
public sealed interface Item permits Title, Symbol {
    /** What a reader sees: the last part of a title's path, or the symbol. */
    String text();
}
