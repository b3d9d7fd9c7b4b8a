# The library, twice from the same sources: libaccsym.so as it ships, and a static one
# for tests, in which nothing is hidden and calls of the heap and of files can be made
# to fail (common/faults.h).

file(GLOB acc_library_sources CONFIGURE_DEPENDS
  ${CMAKE_SOURCE_DIR}/common/*.cpp ${CMAKE_SOURCE_DIR}/record/*.cpp
  ${CMAKE_SOURCE_DIR}/sym/*.cpp ${CMAKE_SOURCE_DIR}/acc/*.cpp)

# Vector code, each level in a source of its own; on other machines these are empty.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|i.86")
  set_source_files_properties(${CMAKE_SOURCE_DIR}/common/text_conversion_sse41.cpp PROPERTIES COMPILE_OPTIONS -msse4.1)
  set_source_files_properties(${CMAKE_SOURCE_DIR}/common/text_conversion_avx2.cpp PROPERTIES COMPILE_OPTIONS -mavx2)
endif()

# The C driver links the library, so that a use of the C++ runtime is a link error.
# CMake would add that runtime by itself; C++ programs get it from their own driver.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")

function(acc_library_flags target)
  target_include_directories(${target}
    PUBLIC ${CMAKE_SOURCE_DIR}/include
    PRIVATE ${CMAKE_SOURCE_DIR})
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fno-threadsafe-statics>
    $<$<CXX_COMPILER_ID:Clang>:-fconstexpr-steps=20000000>)
  target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64)
  target_link_libraries(${target} PRIVATE acc_warnings acc_sanitizers)
endfunction()

function(acc_add_library target)
  add_library(${target} SHARED ${acc_library_sources})
  acc_library_flags(${target})
  set(exports ${CMAKE_SOURCE_DIR}/cmake/exports.map)
  set_target_properties(${target} PROPERTIES
    LINKER_LANGUAGE C
    VERSION ${PROJECT_VERSION}
    SOVERSION 0
    C_VISIBILITY_PRESET hidden
    CXX_VISIBILITY_PRESET hidden
    LINK_DEPENDS ${exports})
  target_link_options(${target} PRIVATE -Wl,--version-script=${exports})
  if(NOT ACC_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
endfunction()

function(acc_add_testable_library target)
  add_library(${target} STATIC ${acc_library_sources})
  acc_library_flags(${target})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
  target_compile_definitions(${target} PUBLIC ACC_FAULTS)
endfunction()

# acc_find_library_from(TARGET FOLDER): what is installed finds the library by the folder it is
# in from the target's own, so that the whole tree can be moved. The system's own needs no help.
function(acc_find_library_from target folder)
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${folder}")
  endif()
endfunction()
