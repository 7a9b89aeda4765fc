# Three interface targets, each of which includes the one before: kriolilglu_flags for everything
# built here, kriolilglu_shipped_flags for what ships, and kriolilglu_library_flags for libraries. A
# compiler or linker that lacks a flag fails; only what depends on the CPU or the loader is probed.

add_library(kriolilglu_flags INTERFACE)
target_compile_options(kriolilglu_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
  # The binary does not depend on the location of the tree.
  "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=." "-ffile-prefix-map=${PROJECT_BINARY_DIR}=.")

add_library(kriolilglu_shipped_flags INTERFACE)
target_link_libraries(kriolilglu_shipped_flags INTERFACE kriolilglu_flags)
target_compile_options(kriolilglu_shipped_flags INTERFACE
  -Wmissing-declarations
  -fno-plt # symbols are bound at load, so a PLT has no use
  -fstack-protector-strong)
target_link_options(kriolilglu_shipped_flags INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)

# A flag is left out if the compiler objects to it by name. Any other failure is an error, and any
# other warning is about the user's flags.
set(ENV{LC_ALL} C)
foreach(flag IN ITEMS
    -fstack-clash-protection -fcf-protection=full -mbranch-protection=standard) # x86, Arm
  string(REGEX REPLACE "^-.([a-z-]+).*" "\\1" name ${flag})
  try_compile(compiles SOURCE_FROM_CONTENT probe.cpp "int main() { return 0; }"
    COMPILE_DEFINITIONS ${flag} OUTPUT_VARIABLE output NO_CACHE)
  if(output MATCHES "(error|warning): [^\n]*${name}")
    continue()
  elseif(NOT compiles)
    message(FATAL_ERROR "${output}")
  endif()
  target_compile_options(kriolilglu_shipped_flags INTERFACE ${flag})
endforeach()

add_library(kriolilglu_library_flags INTERFACE)
target_link_libraries(kriolilglu_library_flags INTERFACE kriolilglu_shipped_flags)
target_compile_options(kriolilglu_library_flags INTERFACE
  -fno-exceptions -fno-rtti
  -fsemantic-interposition) # clang assumes that nothing is interposed
target_link_options(kriolilglu_library_flags INTERFACE
  LINKER:-Bno-symbolic # distributions link with -Bsymbolic-functions
  # A DT_NEEDED entry for every library linked; Debian's gcc would omit libc's.
  LINKER:--no-as-needed)

# The compiler's start files run code at load, although there is nothing to do, and lack the
# control-flow protection marks.
option(KRIOLILGLU_START_FILES "Link the compiler's start files, for runtimes that need them" OFF)
if(NOT KRIOLILGLU_START_FILES)
  target_link_options(kriolilglu_library_flags INTERFACE -nostartfiles)
endif()

option(KRIOLILGLU_PACK_RELOCATIONS
  "Pack relative relocations, if this machine's loader supports them" ON)
if(KRIOLILGLU_PACK_RELOCATIONS AND (CMAKE_CROSSCOMPILING_EMULATOR OR NOT CMAKE_CROSSCOMPILING))
  try_run(status links SOURCE_FROM_CONTENT probe.c [[
    int main(void) {
      static const char *const volatile table[] = {"relocated"};
      return *table[0] != 'r'; }]]
    COMPILE_DEFINITIONS -fPIE # otherwise nothing is relocated
    LINK_OPTIONS -pie LINKER:-z,pack-relative-relocs
    COMPILE_OUTPUT_VARIABLE output NO_CACHE)
  if(output MATCHES "ld[.a-z]*: [^\n]*pack-relative-relocs" OR (links AND NOT status EQUAL 0))
    message(STATUS "Relative relocations are not packed")
  elseif(NOT links)
    message(FATAL_ERROR "${output}")
  else()
    target_link_options(kriolilglu_library_flags INTERFACE LINKER:-z,pack-relative-relocs)
    set(relocations packed) # for the tests
  endif()
endif()

if(KRIOLILGLU_SANITIZE)
  # Sanitizer runtimes stay undefined in shared libraries, and do not support _FORTIFY_SOURCE.
  target_compile_options(kriolilglu_flags INTERFACE
    -fsanitize=${KRIOLILGLU_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>) # needs the C++ runtime
  target_link_options(kriolilglu_flags INTERFACE -fsanitize=${KRIOLILGLU_SANITIZE})
else()
  target_compile_options(kriolilglu_shipped_flags INTERFACE
    "SHELL:-include ${PROJECT_SOURCE_DIR}/cmake/fortify.h")
  target_link_options(kriolilglu_library_flags INTERFACE LINKER:-z,defs)
endif()
