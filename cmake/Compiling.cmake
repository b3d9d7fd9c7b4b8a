# Flags of every target. acc_warnings and acc_sanitizers are linked PRIVATE.

add_library(acc_warnings INTERFACE)
target_compile_options(acc_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow)
if(ACC_WERROR)
  target_compile_options(acc_warnings INTERFACE -Werror)
endif()

# The library has no run-time type information, which the vptr check would need.
add_library(acc_sanitizers INTERFACE)
if(ACC_SANITIZE)
  target_compile_options(acc_sanitizers INTERFACE
    -fsanitize=${ACC_SANITIZE} -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(acc_sanitizers INTERFACE -fsanitize=${ACC_SANITIZE})
endif()
