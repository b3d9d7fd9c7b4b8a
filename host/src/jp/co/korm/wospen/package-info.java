/**
 * The symbol library of a Japanese input method in a Java virtual machine.
 *
 * <p>Begin at {@link jp.co.korm.wospen.SymbolLibrary}. {@link jp.co.korm.wospen.ZikSym} and what
 * it is made of are the native library's own record, for programs that must see every field.
 */
package jp.co.korm.wospen;
