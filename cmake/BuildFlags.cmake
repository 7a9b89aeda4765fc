# Two interface targets: kriolilglu_flags for everything that is built here, kriolilglu_library_flags
# on top of it for what ships.

add_library(kriolilglu_flags INTERFACE)
target_compile_options(kriolilglu_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
  # The same bytes wherever the tree lies.
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=.)

add_library(kriolilglu_library_flags INTERFACE)
target_link_libraries(kriolilglu_library_flags INTERFACE kriolilglu_flags)
target_compile_options(kriolilglu_library_flags INTERFACE
  -Wmissing-declarations
  $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions> $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>
  # A process may put its own function in front of an exported one; clang must be told.
  -fsemantic-interposition
  -fstack-protector-strong -fstack-clash-protection -fcf-protection=full)
target_link_options(kriolilglu_library_flags INTERFACE
  LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack
  # Needed is what is linked, whichever compiler does it: Debian's gcc would leave libc out.
  LINKER:--no-as-needed)

if(KRIOLILGLU_SANITIZE)
  # Their runtimes are left undefined in shared libraries, and do not know _FORTIFY_SOURCE.
  target_compile_options(kriolilglu_flags INTERFACE
    -fsanitize=${KRIOLILGLU_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kriolilglu_flags INTERFACE -fsanitize=${KRIOLILGLU_SANITIZE})
else()
  target_compile_options(kriolilglu_library_flags INTERFACE
    -U_FORTIFY_SOURCE $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  target_link_options(kriolilglu_library_flags INTERFACE LINKER:-z,defs)
endif()
