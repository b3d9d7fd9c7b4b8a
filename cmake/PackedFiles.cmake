# Run by cpack on what it is about to pack: manual pages and changelogs are compressed, as Debian
# has them.
file(GLOB_RECURSE files ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.1
  ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/changelog.Debian)
list(FILTER files INCLUDE REGEX "/man1/|/changelog")
if(files)
  execute_process(COMMAND gzip -9n ${files} COMMAND_ERROR_IS_FATAL ANY)
endif()
