package jp.co.korm.wospen;

import static org.junit.jupiter.api.Assertions.assertEquals;

import java.io.IOException;
import java.lang.reflect.Field;
import java.lang.reflect.Modifier;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.TreeMap;
import java.util.TreeSet;
import java.util.regex.MatchResult;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;

/** Java and the native side say the same: each field, native method and value has its partner. */
class PartnersTest {
    private static final Path SOURCES = Path.of(System.getProperty("accsym.sources"));

    static List<Field> instanceFields(Class<?> type) {
        return Arrays.stream(type.getDeclaredFields()).filter(field -> !Modifier.isStatic(field.getModifiers())).toList();
    }

    private static String source(String path) throws IOException {
        return Files.readString(SOURCES.resolve(path));
    }

    private static List<MatchResult> matches(String pattern, String text) {
        return Pattern.compile(pattern, Pattern.DOTALL).matcher(text).results().toList();
    }

    private static Set<String> exported() throws IOException {
        String library = System.getProperty("accsym.library");
        Process nm = new ProcessBuilder("nm", "-D", "--defined-only", library).start();
        return nm.inputReader().lines().map(line -> line.replaceAll(".* |@.*", "")).collect(Collectors.toSet());
    }

    /** Field name and type of a C record, "int" or "byte[]"; of the list boxes one each. */
    private static Map<String, String> recordFields(String record) throws IOException {
        String struct = "typedef struct " + record + " \\{(.*?)\\} " + record;
        String body = matches(struct, source("include/accdata.h")).get(0).group(1);
        String declaration = "(unsigned short|unsigned char|ListBox) (\\*?)(\\w+)(\\[ACC_LISTBOX_MAX\\])?;";
        Map<String, String> fields = new TreeMap<>();
        for (MatchResult field : matches(declaration, body)) {
            if (field.group(1).equals("ListBox")) {
                fields.put("tListBox", "ZikSymListBox[]");
                for (int i = 1; i <= 10; i++) fields.put("tListBox" + i, "ZikSymListBox");
            } else {
                fields.put(field.group(3), field.group(2).isEmpty() ? "int" : "byte[]");
            }
        }
        return fields;
    }

    @Test
    void fieldsOfTheRecordsMatch() throws IOException {
        Map<String, Class<?>> classes = Map.of("Accdata", ZikSymAccdata.class, "ListBox", ZikSymListBox.class);
        Set<String> functions = new TreeSet<>();
        for (Map.Entry<String, Class<?>> entry : classes.entrySet()) {
            String record = entry.getKey();
            Map<String, String> fields = new TreeMap<>();
            for (Field field : instanceFields(entry.getValue())) {
                fields.put(field.getName(), field.getType().getSimpleName());
                if (field.getName().startsWith("tListBox")) continue;
                String name = field.getName().substring(0, 1).toUpperCase() + field.getName().substring(1);
                functions.add("jni_Get" + name + "_from_" + record);
                functions.add("jni_Set" + name + "_in_" + record);
            }
            assertEquals(recordFields(record), fields);
        }
        assertEquals(60, functions.size());
        Set<String> exported = exported();
        exported.removeIf(name -> !name.matches("jni_[GS]et(?!All_|ListBox_).*"));
        assertEquals(functions, exported);
    }

    @Test
    void nativeMethodsMatch() throws IOException {
        Set<String> methods = Stream.of(ZikSymAccdata.class, ZikSymListBox.class, ZikSym.class, ZikNative.class)
                .flatMap(type -> Arrays.stream(type.getDeclaredMethods()))
                .filter(method -> Modifier.isNative(method.getModifiers()))
                .map(method -> "Java_" + method.getDeclaringClass().getName().replace('.', '_') + "_" + method.getName())
                .collect(Collectors.toSet());
        Set<String> natives = exported();
        natives.removeIf(name -> !name.startsWith("Java_"));
        assertEquals(methods, natives);
    }

    @Test
    void valuesMatch() throws IOException {
        String header = source("include/accdata.h");
        Map<String, Integer> sizes = new TreeMap<>();
        for (MatchResult size : matches("#define ACC_(?:SIZE_)?(\\w+) \\(?(\\d+)(?: \\+ (\\d+)\\))?", header)) {
            int more = size.group(3) == null ? 0 : Integer.parseInt(size.group(3));
            sizes.put(size.group(1), Integer.parseInt(size.group(2)) + more);
        }
        ZikSym record = new ZikSym();
        ZikSymListBox list = record.tListBox1;
        assertEquals(new TreeMap<>(Map.of("LISTBOX_MAX", record.tListBox.length,
                "MESSAGE", record.lpchMessage.length, "RESULT", record.lpchResult.length,
                "DISPLAY", record.lpchDisplay.length, "LB_LEVEL", list.lpchLBLevel.length,
                "LB_LIST", list.lpchLBList.length, "LB_LISTINFO", list.lpchLBListInfo.length,
                "LB_ITEMINFO", list.lpchLBItemInfo.length)), sizes);

        List<Integer> codes = matches("ACC_VKEY_\\w+ = (\\d+)", header).stream()
                .map(code -> Integer.valueOf(code.group(1))).sorted().toList();
        assertEquals(codes, Arrays.stream(Command.values()).map(Command::code).sorted().toList());
    }

    @Test
    void messagesMatch() throws IOException {
        String table = source("record/message.cpp");
        List<MatchResult> texts = matches("\"([^\"]*[。ー])\"", table);
        for (int i = 0; i < 20; i++) assertEquals(i, SymbolException.numberOf(texts.get(i).group(1)));
    }
}
