# The bridge to a Java virtual machine: adds the sources of jni/ to the library. Include
# it after Library and before the first library is added. Only the header of an installed
# JDK is used, nothing of a virtual machine is linked. Without a JDK the library has no
# native methods and there is no kigou.jar.
#
# Sets ACC_JNI when there is a bridge and ACC_JAVA when the Java side is built and tested
# too, and defines acc_jni_headers for who compiles against the header.

find_package(Java 17 QUIET COMPONENTS Development)
if(Java_JAVAC_EXECUTABLE)
  file(REAL_PATH ${Java_JAVAC_EXECUTABLE} acc_javac)
  cmake_path(GET acc_javac PARENT_PATH acc_jdk)
  cmake_path(GET acc_jdk PARENT_PATH acc_jdk)
  find_path(ACC_JNI_INCLUDE_DIR jni.h HINTS ${acc_jdk}/include $ENV{JAVA_HOME}/include)
  mark_as_advanced(ACC_JNI_INCLUDE_DIR)
  file(GLOB acc_jni_machine_header ${ACC_JNI_INCLUDE_DIR}/jni_md.h ${ACC_JNI_INCLUDE_DIR}/*/jni_md.h)
endif()

set(ACC_JNI OFF)
set(ACC_JAVA OFF)
if(NOT Java_JAVAC_EXECUTABLE OR NOT ACC_JNI_INCLUDE_DIR OR NOT acc_jni_machine_header)
  message(STATUS "No JDK (17 or newer): left out the native methods of jni/ and kigou.jar")
else()
  set(ACC_JNI ON)
  list(GET acc_jni_machine_header 0 acc_jni_machine_header)
  cmake_path(GET acc_jni_machine_header PARENT_PATH acc_jni_machine_dir)
  set(acc_jni_includes ${ACC_JNI_INCLUDE_DIR} ${acc_jni_machine_dir})
  add_library(acc_jni_headers INTERFACE)
  target_include_directories(acc_jni_headers SYSTEM INTERFACE ${acc_jni_includes})

  file(GLOB acc_jni_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/jni/*.cpp)
  list(JOIN acc_jni_includes ";-isystem;" acc_jni_options)
  set_source_files_properties(${acc_jni_sources} PROPERTIES
    COMPILE_OPTIONS "-isystem;${acc_jni_options}")
  list(APPEND acc_library_sources ${acc_jni_sources})

  # A virtual machine loads only what is built for it, and not a sanitizer's run-time.
  if(ACC_SANITIZE OR CMAKE_CXX_FLAGS MATCHES "-m32")
    message(STATUS "Sanitizers or 32 bit: left out kigou.jar and its tests")
  else()
    set(ACC_JAVA ON)
  endif()
endif()
