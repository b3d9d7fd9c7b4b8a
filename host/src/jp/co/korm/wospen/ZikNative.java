package jp.co.korm.wospen;

/**
 * The library's own conversion between Shift_JIS and UTF-16, the table of JIS X 0208.
 *
 * <p>Both methods work in steps of two bytes, drop every result below U+0100 (ASCII, and the
 * twelve characters of JIS X 0208 that lie there) and check no size.
 * {@link jp.co.korm.wospen.symbols.SjisText} is what text wants. They keep no state: any thread
 * may call at any time.
 */
public final class ZikNative {
    static {
        NativeLoader.load();
    }

    private ZikNative() {}

    /**
     * UTF-16, high byte first, to Shift_JIS. A unit that JIS X 0208 lacks is written with its
     * bytes swapped.
     *
     * @param unicode the source; never written
     * @param length bytes of the source to convert; its low 16 bits count
     * @param sjis gets the result and a NUL; at least the length, made even, plus 1 byte
     * @return 1 converted; 0 an array is null or the virtual machine could not hand it out
     */
    public static native int AccUnicodeToSjis(byte[] unicode, int length, byte[] sjis);

    /**
     * Shift_JIS, every character two bytes, to UTF-16 with the high byte first. A pair that
     * JIS X 0208 lacks becomes U+3013.
     *
     * @param sjis the source; never written
     * @param length bytes of the source to convert; its low 16 bits count
     * @param unicode gets the result and one NUL; at least the length, made even, plus 1 byte
     * @return 1 converted; 0 an array is null or the virtual machine could not hand it out
     */
    public static native int AccSjisToUnicode(byte[] sjis, int length, byte[] unicode);
}
