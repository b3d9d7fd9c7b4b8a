# Flags of every target: acc_warnings (a program: acc_program_warnings) and acc_sanitizers
# are linked PRIVATE; acc_built_quickly too where it pays.

add_library(acc_warnings INTERFACE)
target_compile_options(acc_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow)
if(ACC_WERROR)
  target_compile_options(acc_warnings INTERFACE -Werror)
endif()

# Programs use the standard library, in whose strings and vectors g++ 12 sees overlaps and
# overreads that are not there once it inlines them. The library does without it and is
# checked in full.
add_library(acc_program_warnings INTERFACE)
target_link_libraries(acc_program_warnings INTERFACE acc_warnings)
target_compile_options(acc_program_warnings INTERFACE
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-stringop-overread -Wno-stringop-overflow -Wno-maybe-uninitialized -Wno-array-bounds>)

# Under the sanitizers most of the time goes into compiling templates of programs that have
# little to do themselves: these are built as they are written.
add_library(acc_built_quickly INTERFACE)
if(ACC_SANITIZE)
  target_compile_options(acc_built_quickly INTERFACE -O0)
endif()

# The library has no run-time type information, which the vptr check would need.
add_library(acc_sanitizers INTERFACE)
if(ACC_SANITIZE)
  target_compile_options(acc_sanitizers INTERFACE
    -fsanitize=${ACC_SANITIZE} -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(acc_sanitizers INTERFACE -fsanitize=${ACC_SANITIZE})
endif()
