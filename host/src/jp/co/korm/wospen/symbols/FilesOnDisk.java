package jp.co.korm.wospen.symbols;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.nio.file.DirectoryIteratorException;
import java.nio.file.DirectoryStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.security.MessageDigest;
import java.security.NoSuchAlgorithmException;
import java.util.Arrays;
import java.util.HexFormat;
import java.util.Optional;

/**
 * The symbol files of both directories, found as the library finds them: the program directory
 * first, a directory in the system's order, and of two files with a title the first.
 *
 * <p>The library opens and saves by title and names no file, so who wants to know what a save
 * would replace has to look for himself.
 */
final class FilesOnDisk {
    private static final String EXTENSION = ".kig";
    private static final int LONGEST_PATH = 259;
    private static final int HEAD_BYTES = 1023; // in which the library looks for a title
    private static final byte[] HEADER = SjisText.encode("〈記号〉");
    private static final byte[] NAME = SjisText.encode("名称=");

    /**
     * A symbol file as it was when it was looked at. Two are equal when a save over the one
     * loses nothing that the other did not have.
     *
     * @param digest of all its bytes; size and times would not tell a quick change
     */
    record Found(Path path, String digest) {}

    private final Path program;
    private final Path common;

    FilesOnDisk(Path program, Path common) {
        this.program = program;
        this.common = common;
    }

    Path program() {
        return program;
    }

    Path common() {
        return common;
    }

    /** The file that the library takes for a title; what cannot be read is none to it either. */
    Optional<Found> find(Title title) {
        if (!Files.isReadable(program)) return Optional.empty();
        Optional<Path> file = find(program, title).or(() -> find(common, title));
        return file.map(path -> new Found(path, digest(path)));
    }

    private static Optional<Path> find(Path directory, Title title) {
        try (DirectoryStream<Path> files = Files.newDirectoryStream(directory)) {
            for (Path file : files) {
                if (isListed(file) && Arrays.equals(titleOf(file), title.sjis())) return Optional.of(file);
            }
        } catch (IOException | DirectoryIteratorException e) {
            return Optional.empty();
        }
        return Optional.empty();
    }

    private static boolean isListed(Path file) {
        return file.getFileName().toString().contains(EXTENSION) && Files.isRegularFile(file)
                && file.toString().getBytes(SymbolLibrary.fileNames()).length <= LONGEST_PATH;
    }

    /** The file's title in Shift_JIS; null when it is no symbol file or cannot be read. */
    private static byte[] titleOf(Path file) {
        byte[] head;
        try (InputStream bytes = Files.newInputStream(file)) {
            head = shiftJis(bytes.readNBytes(HEAD_BYTES));
        } catch (IOException e) {
            return null;
        }
        if (!startsAt(head, 0, HEADER)) return null;
        for (int at = 0; at + NAME.length <= head.length; at++) {
            if (!startsAt(head, at, NAME)) continue;
            int from = at + NAME.length;
            int end = from;
            while (end < head.length && head[end] != '\r') end++;
            return Arrays.copyOfRange(head, from, end);
        }
        return null;
    }

    /** From EUC-JP, byte by byte as the library does it: also what is no text. */
    private static byte[] shiftJis(byte[] euc) {
        ByteArrayOutputStream sjis = new ByteArrayOutputStream();
        for (int i = 0; i < euc.length && euc[i] != 0; i++) {
            int first = euc[i] & 0xFF;
            boolean takesSecond = first >= 0xA1 && first <= 0xFE || first == 0x8E;
            if (takesSecond && (i + 1 == euc.length || euc[i + 1] == 0)) break;
            if (first == 0x8E) {
                sjis.write(euc[++i]);
            } else if (takesSecond) {
                int row = (first & 0x7F) - 0x20;
                int cell = (euc[++i] & 0x7F) - 0x20;
                sjis.write((row - 1) / 2 + (row <= 62 ? 0x81 : 0xC1));
                sjis.write(row % 2 == 0 ? cell + 0x9E : cell + (cell <= 63 ? 0x3F : 0x40));
            } else {
                if (first == '\n') sjis.write('\r');
                sjis.write(first);
            }
        }
        return sjis.toByteArray();
    }

    private static boolean startsAt(byte[] bytes, int at, byte[] wanted) {
        return at + wanted.length <= bytes.length
                && Arrays.equals(bytes, at, at + wanted.length, wanted, 0, wanted.length);
    }

    /** What cannot be read is equal to nothing but a file that cannot either. */
    private static String digest(Path file) {
        try {
            byte[] digest = MessageDigest.getInstance("SHA-256").digest(Files.readAllBytes(file));
            return HexFormat.of().formatHex(digest);
        } catch (IOException e) {
            return "cannot be read";
        } catch (NoSuchAlgorithmException e) {
            throw new AssertionError("every platform has SHA-256", e);
        }
    }
}
