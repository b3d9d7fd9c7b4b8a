# Compiles examples/Browse.java and the examples of docs/java-host.md against the built jar and
# runs them with a bare java from a folder that has nothing to do with the build; the library
# comes from inside the jar.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/tmp ${WORK}/elsewhere ${WORK}/common)
file(COPY ${JAR} DESTINATION ${WORK})

# Every block of Java in the document is what stands in a main, behind its imports.
file(READ ${SOURCES}/docs/java-host.md document)
set(examples 0)
while(document MATCHES "```java\n([^`]*)```")
  string(LENGTH "${CMAKE_MATCH_0}" length)
  string(FIND "${document}" "${CMAKE_MATCH_0}" at)
  math(EXPR behind "${at} + ${length}")
  string(SUBSTRING "${document}" ${behind} -1 document)
  math(EXPR examples "${examples} + 1")
  string(REPLACE "/usr/share/kigou" "${SOURCES}/data" statements "${CMAKE_MATCH_1}")
  string(REPLACE "/var/lib/kigou" "${WORK}/common" statements "${statements}")
  file(WRITE ${WORK}/Example${examples}.java "import java.nio.file.Path;\nimport java.util.List;\n"
    "import jp.co.korm.wospen.symbols.*;\nclass Example${examples} {\n"
    "public static void main(String[] arguments) {\n${statements}\n}\n}\n")
endwhile()
if(NOT examples EQUAL 2)
  message(FATAL_ERROR "${examples} examples in docs/java-host.md")
endif()
execute_process(COMMAND ${JAVAC} -encoding UTF-8 -cp ${WORK}/kigou.jar -d ${WORK}
  ${SOURCES}/examples/Browse.java ${WORK}/Example1.java ${WORK}/Example2.java COMMAND_ERROR_IS_FATAL ANY)

set(java ${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH --unset=JAVA_TOOL_OPTIONS TMPDIR=${WORK}/tmp
  ${JAVA} -Djava.io.tmpdir=${WORK}/tmp -Dfile.encoding=UTF-8 -Dstdout.encoding=UTF-8)

# expect(TEXT ARGUMENTS...): that run succeeds and prints what matches.
function(expect text)
  execute_process(COMMAND ${java} ${ARGN} WORKING_DIRECTORY ${WORK} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  if(NOT output MATCHES "${text}")
    message(FATAL_ERROR "${ARGN} printed:\n${output}")
  endif()
endfunction()
expect("^標準の記号\n.*\n682 symbols below [0-9]+ titles\n$" -cp kigou.jar:. Browse ${SOURCES}/data)
expect("\n682 symbols" -p kigou.jar --add-modules jp.co.korm.wospen -cp . Browse ${SOURCES}/data)
expect("^標準の記号\n.*句読点\n" -cp kigou.jar:. Example1)
expect("^私の記号: → 81A8, ← 81A9\n$" -cp kigou.jar:. Example2)
file(READ ${WORK}/common/@0000000.kig saved HEX)
if(NOT saved MATCHES "a2aaa2ab0a") # →← and the end of their line
  message(FATAL_ERROR "The example of editing saved ${saved}")
endif()
file(GLOB left ${WORK}/tmp/accsym*)
if(left)
  message(FATAL_ERROR "left behind: ${left}")
endif()

# A library that cannot be loaded: the error says which and where.
function(expect_error text)
  execute_process(COMMAND ${java} ${ARGN} Browse ${SOURCES}/data WORKING_DIRECTORY ${WORK}/elsewhere
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE error)
  string(FIND "${error}" "${text}" found)
  if(result EQUAL 0 OR found LESS 0)
    message(FATAL_ERROR "wanted an error with \"${text}\", got ${result}:\n${output}${error}")
  endif()
endfunction()
set(path -cp ${WORK}/kigou.jar:${WORK})
expect_error("accsym.library names ${WORK}/absent.so" -Daccsym.library=${WORK}/absent.so ${path})
file(WRITE ${WORK}/broken/libaccsym.so "no library")
expect_error("accsym.library names ${WORK}/broken/libaccsym.so"
  -Daccsym.library=${WORK}/broken/libaccsym.so ${path})
file(MAKE_DIRECTORY ${WORK}/bare)
file(COPY_FILE ${NO_NATIVES} ${WORK}/bare/libaccsym.so)
expect_error("it has no native method ZikSym.AccSym" -Daccsym.library=${WORK}/bare/libaccsym.so ${path})

# Without the copy in the jar, the places that were looked into are named; a broken library
# on the path is one of them, or one without natives, and not the end while the jar has its copy.
expect("\n682 symbols" -Djava.library.path=${WORK}/broken:${WORK}/bare ${path} Browse ${SOURCES}/data)
file(ARCHIVE_EXTRACT INPUT ${WORK}/kigou.jar DESTINATION ${WORK}/classes)
file(REMOVE_RECURSE ${WORK}/classes/jp/co/korm/wospen/native)
set(path -cp ${WORK}/classes:${WORK} -Djava.library.path=${WORK}/broken:${WORK}/bare:${WORK}/empty)
expect_error("${WORK}/broken/libaccsym.so: " ${path})
expect_error("${WORK}/bare/libaccsym.so: it has no native method ZikSym.AccSym" ${path})
expect_error("${WORK}/empty/libaccsym.so: not there" ${path})
expect_error("libaccsym.so beside jp.co.korm.wospen.NativeLoader: not there" ${path})

file(READ ${WORK}/classes/META-INF/MANIFEST.MF manifest)
if(NOT manifest MATCHES "Implementation-Version: ${VERSION}[\r\n]")
  message(FATAL_ERROR "The manifest:\n${manifest}")
endif()
