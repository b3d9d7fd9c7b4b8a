/**
 * The native library's own record and natives, for programs that must see every field.
 *
 * <p>Names, fields and this package are what the library looks for. Programs that want titles
 * and symbols begin at {@link jp.co.korm.wospen.symbols.SymbolLibrary}.
 */
package jp.co.korm.wospen;
