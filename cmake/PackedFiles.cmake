# Run by cpack on what it is about to pack, and makes it what Debian has: manual pages and
# changelogs are compressed, and a jar goes without the library, which is a package of its own.
file(GLOB_RECURSE files ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.1
  ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/changelog.Debian)
list(FILTER files INCLUDE REGEX "/man1/|/changelog")
if(files)
  execute_process(COMMAND gzip -9n ${files} COMMAND_ERROR_IS_FATAL ANY)
endif()

file(GLOB_RECURSE jars ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*-*.jar)
foreach(jar IN LISTS jars)
  set(classes ${CPACK_TOPLEVEL_DIRECTORY}/classes)
  file(REMOVE_RECURSE ${classes})
  file(ARCHIVE_EXTRACT INPUT ${jar} DESTINATION ${classes})
  file(REMOVE_RECURSE ${classes}/jp/co/korm/wospen/native)
  # The manifest stands first in a jar.
  execute_process(COMMAND ${CMAKE_COMMAND} -E tar cf ${jar} --format=zip META-INF jp
    WORKING_DIRECTORY ${classes} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
