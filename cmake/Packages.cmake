# Debian packages, each of an install component of its name: cpack -G DEB in a build whose prefix
# is /usr. scripts/packages makes and checks them.

set(CPACK_PACKAGE_NAME kigou)
set(CPACK_PACKAGE_VENDOR kigou)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # it would stand before that of each package
set(CPACK_PACKAGE_CONTACT "The kigou developers <kigou@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/PackedFiles.cmake)
set(acc_package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(acc_packaging ${CMAKE_SOURCE_DIR}/packaging/debian)
set(acc_packages ${CMAKE_BINARY_DIR}/packages)

# acc_package(COMPONENT NAME SECTION [SHLIBDEPS] [DEPENDS text] [RECOMMENDS text] [CONTROL file...]
# [DOCS file...]): the description is packaging/debian/NAME.txt, a short line and then paragraphs.
set(CPACK_COMPONENTS_ALL)
macro(acc_package component name section)
  cmake_parse_arguments(package "SHLIBDEPS" "DEPENDS;RECOMMENDS" "CONTROL;DOCS" ${ARGN})
  string(TOUPPER ${component} upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  file(READ ${acc_packaging}/${name}.txt description)
  string(STRIP "${description}" CPACK_DEBIAN_${upper}_DESCRIPTION)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${acc_packaging}/${name}.txt)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ${package_SHLIBDEPS})
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${package_DEPENDS}")
  set(CPACK_DEBIAN_${upper}_PACKAGE_RECOMMENDS "${package_RECOMMENDS}")
  set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA "${package_CONTROL}")
  # Not for cmake --install, which knows no packages.
  configure_file(${acc_packaging}/changelog.in ${acc_packages}/${name}/changelog.Debian @ONLY)
  install(FILES ${acc_packaging}/copyright ${acc_packages}/${name}/changelog.Debian ${package_DOCS}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component} EXCLUDE_FROM_ALL)
  if(EXISTS ${acc_packaging}/${name}.overrides)
    install(FILES ${acc_packaging}/${name}.overrides RENAME ${name}
      DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${component} EXCLUDE_FROM_ALL)
  endif()
endmacro()

set(acc_same_library "libaccsym0 (= ${acc_package_version})")
file(CONFIGURE OUTPUT ${acc_packages}/shlibs CONTENT "libaccsym 0 libaccsym0 (>= ${PROJECT_VERSION})\n")
acc_package(library libaccsym0 libs SHLIBDEPS CONTROL ${acc_packages}/shlibs ${acc_packaging}/triggers)
acc_package(development libaccsym-dev libdevel DEPENDS ${acc_same_library}
  DOCS ${CMAKE_SOURCE_DIR}/docs/host-guide.md ${CMAKE_SOURCE_DIR}/docs/file-format.md
       ${CMAKE_SOURCE_DIR}/examples/browse.c)
if(ACC_CLI)
  acc_package(program kigou utils SHLIBDEPS DEPENDS ${acc_same_library} RECOMMENDS kigou-chart
    DOCS ${CMAKE_SOURCE_DIR}/docs/kigou.md ${CMAKE_SOURCE_DIR}/docs/file-format.md)
endif()
if(TARGET fcitx_kigou)
  acc_package(module fcitx5-kigou utils SHLIBDEPS
    DEPENDS "${acc_same_library}, kigou (= ${acc_package_version}), fcitx5"
    DOCS ${CMAKE_SOURCE_DIR}/docs/fcitx.md)
endif()
if(TARGET kigou-chart)
  acc_package(chart kigou-chart utils SHLIBDEPS DEPENDS "kigou (= ${acc_package_version})"
    RECOMMENDS "fonts-noto-cjk | fonts-ipafont-gothic")
endif()
if(ACC_JAVA)
  # The loader looks into this folder before it takes the copy in the jar.
  install(CODE "file(MAKE_DIRECTORY \"\$ENV{DESTDIR}${CMAKE_INSTALL_FULL_LIBDIR}/jni\")
    file(CREATE_LINK ../libaccsym.so.0 \"\$ENV{DESTDIR}${CMAKE_INSTALL_FULL_LIBDIR}/jni/libaccsym.so\" SYMBOLIC)"
    COMPONENT java EXCLUDE_FROM_ALL)
  acc_package(java libaccsym-java java DEPENDS ${acc_same_library}
    DOCS ${CMAKE_SOURCE_DIR}/docs/java-host.md ${CMAKE_SOURCE_DIR}/examples/Browse.java)
endif()

include(CPack)
