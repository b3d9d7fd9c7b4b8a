package jp.co.korm.wospen.symbols;

/**
 * The codes of a symbol as text.
 *
 * @param sjis Shift_JIS, four hexadecimal digits
 * @param jis JIS, four hexadecimal digits
 * @param kuten row and cell, two digits each; a row above 99 has three
 */
public record SymbolCodes(String sjis, String jis, String kuten) {}
