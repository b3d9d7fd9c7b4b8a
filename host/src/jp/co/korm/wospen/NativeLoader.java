package jp.co.korm.wospen;

import java.io.File;
import java.io.IOException;
import java.io.InputStream;
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
 * jar is taken, by way of a temporary file that is gone again when it has been loaded.
 */
final class NativeLoader {
    static final String PROPERTY = "accsym.library";

    private static boolean loaded;

    private NativeLoader() {}

    /**
     * Loads the library unless that has been done.
     *
     * @throws UnsatisfiedLinkError naming what was looked for, where, and what was wrong there
     */
    static synchronized void load() {
        if (loaded) return;
        String explicit = System.getProperty(PROPERTY);
        if (explicit != null) {
            loadExplicit(explicit);
        } else {
            loadFound();
        }
        loaded = true;
    }

    private static void loadExplicit(String path) {
        try {
            System.load(Path.of(path).toAbsolutePath().toString());
        } catch (UnsatisfiedLinkError | RuntimeException e) {
            throw failure("the system property " + PROPERTY + " names " + path, List.of(e.toString()), e);
        }
    }

    private static void loadFound() {
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
                System.load(candidate.toString());
                return;
            } catch (UnsatisfiedLinkError e) {
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
            System.load(temporary.toString());
        } finally {
            Files.deleteIfExists(temporary);
        }
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
        UnsatisfiedLinkError error = new UnsatisfiedLinkError(
                "cannot load the symbol library: " + what + "\n  " + String.join("\n  ", tried));
        if (cause != null) error.initCause(cause);
        return error;
    }
}
