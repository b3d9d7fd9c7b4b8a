/**
 * The symbol library of a Japanese input method in a Java virtual machine.
 *
 * <p>Begin at {@link jp.co.korm.wospen.symbols.SymbolLibrary}. Everything here goes through the
 * public record of {@link jp.co.korm.wospen}, which knows nothing of this package.
 */
package jp.co.korm.wospen.symbols;
