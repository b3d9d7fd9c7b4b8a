# Compiles examples/Browse.java against the built jar and runs it with a bare java from a
# folder that has nothing to do with the build; the library comes from inside the jar.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/tmp ${WORK}/elsewhere)
file(COPY ${JAR} DESTINATION ${WORK})
execute_process(COMMAND ${JAVAC} -encoding UTF-8 -cp ${WORK}/kigou.jar -d ${WORK}
  ${SOURCES}/examples/Browse.java COMMAND_ERROR_IS_FATAL ANY)

set(java ${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH --unset=JAVA_TOOL_OPTIONS TMPDIR=${WORK}/tmp
  ${JAVA} -Djava.io.tmpdir=${WORK}/tmp -Dfile.encoding=UTF-8 -Dstdout.encoding=UTF-8)
execute_process(COMMAND ${java} -cp kigou.jar:. Browse ${SOURCES}/data
  WORKING_DIRECTORY ${WORK} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
if(NOT output MATCHES "^標準の記号\n" OR NOT output MATCHES "\n682 symbols below [0-9]+ titles\n$")
  message(FATAL_ERROR "Browse printed:\n${output}")
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
file(WRITE ${WORK}/libpath/libaccsym.so "no library")
expect_error("accsym.library names ${WORK}/libpath/libaccsym.so"
  -Daccsym.library=${WORK}/libpath/libaccsym.so ${path})

# Without the copy in the jar, the places that were looked into are named; a broken library
# on the path is one of them, and not the end while the jar has its copy.
execute_process(COMMAND ${java} -Djava.library.path=${WORK}/libpath ${path} Browse ${SOURCES}/data
  WORKING_DIRECTORY ${WORK}/elsewhere OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(ARCHIVE_EXTRACT INPUT ${WORK}/kigou.jar DESTINATION ${WORK}/classes)
file(REMOVE_RECURSE ${WORK}/classes/jp/co/korm/wospen/native)
set(path -cp ${WORK}/classes:${WORK} -Djava.library.path=${WORK}/libpath:${WORK}/empty)
expect_error("${WORK}/libpath/libaccsym.so: " ${path})
expect_error("${WORK}/empty/libaccsym.so: not there" ${path})
expect_error("libaccsym.so beside jp.co.korm.wospen.NativeLoader: not there" ${path})
