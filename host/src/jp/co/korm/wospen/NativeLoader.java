package jp.co.korm.wospen;

import java.io.File;
import java.io.IOException;
import java.io.InputStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;

/**
 * Loads the native library, once.
 *
 * <p>A path in the system property {@value #PROPERTY} is final: that file or an error. Else
 * the folders of {@code java.library.path} are looked through, and then the copy inside the
 * jar is taken, by way of a temporary file that is gone again when it has been loaded. A
 * library that was built without its native methods is passed over like one that is broken.
 */
public final class NativeLoader {
    /** System property that names the library's file. */
    public static final String PROPERTY = "accsym.library";

    private static final List<String> NATIVES = List.of("ZikSym_AccSym", "ZikSymAccdata_initFIDs",
            "ZikSymListBox_initFIDs", "ZikNative_AccUnicodeToSjis", "ZikNative_AccSjisToUnicode");

    private static boolean loaded;
    private static UnsatisfiedLinkError failure;

    private NativeLoader() {}

    /**
     * Loads the library unless that has been done. The classes that need it call this; a
     * program may call it earlier, to see the error where it can tell it.
     *
     * @throws UnsatisfiedLinkError naming what was looked for, where, and what was wrong there.
     *     It is final: later calls say the same
     */
    public static synchronized void load() {
        if (!loaded && failure == null) {
            try {
                find();
                loaded = true;
            } catch (UnsatisfiedLinkError e) {
                failure = e;
            }
        }
        if (failure != null) throw error(failure.getMessage(), failure.getCause());
    }

    /** {@link #load()} for a static initialiser, which an error would make unusable for good. */
    static boolean canLoad() {
        try {
            load();
            return true;
        } catch (UnsatisfiedLinkError e) {
            return false;
        }
    }

    private static void find() {
        String explicit = System.getProperty(PROPERTY);
        if (explicit == null) {
            findInPlaces();
        } else if (explicit.isEmpty()) {
            throw failure("the system property " + PROPERTY + " is empty", List.of(), null);
        } else {
            try {
                loadFile(Path.of(explicit).toAbsolutePath());
            } catch (UnsatisfiedLinkError | IOException | RuntimeException e) {
                String what = "the system property " + PROPERTY + " names " + explicit;
                throw failure(what, List.of(e.toString()), e);
            }
        }
    }

    private static void findInPlaces() {
        String file = System.mapLibraryName("accsym");
        List<String> tried = new ArrayList<>();
        Throwable last = null;
        for (String folder : System.getProperty("java.library.path", "").split(File.pathSeparator)) {
            Path candidate = Path.of(folder).resolve(file).toAbsolutePath();
            if (folder.isEmpty() || !Files.exists(candidate)) {
                if (!folder.isEmpty()) tried.add(candidate + ": not there");
                continue;
            }
            try {
                loadFile(candidate);
                return;
            } catch (UnsatisfiedLinkError | IOException e) {
                tried.add(candidate + ": " + e.getMessage());
                last = e;
            }
        }
        String resource = "native/" + platform() + "/" + file;
        try (InputStream copy = NativeLoader.class.getResourceAsStream(resource)) {
            if (copy == null) {
                tried.add(resource + " beside " + NativeLoader.class.getName() + ": not there");
            } else {
                loadCopy(copy, file);
                return;
            }
        } catch (UnsatisfiedLinkError | IOException e) {
            tried.add(resource + " by way of " + System.getProperty("java.io.tmpdir") + ": " + e);
            last = e;
        }
        throw failure("looked for " + file, tried, last);
    }

    private static void loadCopy(InputStream copy, String file) throws IOException {
        Path temporary = Files.createTempFile("accsym", file);
        try {
            Files.copy(copy, temporary, StandardCopyOption.REPLACE_EXISTING);
            loadFile(temporary);
        } finally {
            Files.deleteIfExists(temporary);
        }
    }

    /**
     * Loads a file that has every native. What lacks one would load as well and fail at the
     * first call, so the names are looked for beforehand, as they stand in a table of symbols.
     */
    private static void loadFile(Path file) throws IOException {
        String bytes = new String(Files.readAllBytes(file), StandardCharsets.ISO_8859_1);
        for (String name : NATIVES) {
            if (!bytes.contains("Java_jp_co_korm_wospen_" + name + "\0")) {
                throw new UnsatisfiedLinkError("it has no native method " + name.replace('_', '.')
                        + "; it is no library, or was built without a Java development kit");
            }
        }
        System.load(file.toString());
    }

    /** Folder of the copy for this machine, such as {@code linux-x86_64}. */
    private static String platform() {
        String machine = System.getProperty("os.arch").toLowerCase(Locale.ROOT);
        machine = switch (machine) {
            case "amd64" -> "x86_64";
            case "arm64" -> "aarch64";
            case "x86", "i486", "i586", "i686" -> "i386";
            default -> machine;
        };
        return System.getProperty("os.name").toLowerCase(Locale.ROOT) + "-" + machine;
    }

    private static UnsatisfiedLinkError failure(String what, List<String> tried, Throwable cause) {
        String places = tried.isEmpty() ? "" : "\n  " + String.join("\n  ", tried);
        return error("cannot load the symbol library: " + what + places, cause);
    }

    private static UnsatisfiedLinkError error(String message, Throwable cause) {
        UnsatisfiedLinkError error = new UnsatisfiedLinkError(message);
        if (cause != null) error.initCause(cause);
        return error;
    }
}
