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
  -fno-plt # all symbols are bound at load: calls go straight there
  -fstack-protector-strong -fstack-clash-protection -fcf-protection=full)
target_link_options(kriolilglu_library_flags INTERFACE
  LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack
  # Needed is what is linked, whichever compiler does it: Debian's gcc would leave libc out.
  LINKER:--no-as-needed)

# The tables of names are pointers, which the loader relocates: packed, that takes 250 bytes of the
# file instead of 38,000. Linkers and loaders older than Debian 12's do not know the form.
option(KRIOLILGLU_PACK_RELOCATIONS
  "Pack relative relocations, if this machine's loader takes them" ON)
if(KRIOLILGLU_PACK_RELOCATIONS AND NOT CMAKE_CROSSCOMPILING)
  include(CheckSourceRuns)
  include(CMakePushCheckState)
  cmake_push_check_state(RESET)
  set(CMAKE_REQUIRED_FLAGS -fPIE) # else there would be nothing to relocate
  set(CMAKE_REQUIRED_LINK_OPTIONS -pie LINKER:--fatal-warnings,-z,pack-relative-relocs)
  check_source_runs(C [[
    const char *const table[] = {"relocated"};
    int main(void) { return **table != 'r'; }]]
    KRIOLILGLU_LOADER_TAKES_PACKED_RELOCATIONS)
  cmake_pop_check_state()
  if(KRIOLILGLU_LOADER_TAKES_PACKED_RELOCATIONS)
    target_link_options(kriolilglu_library_flags INTERFACE LINKER:-z,pack-relative-relocs)
    set(relocations packed) # for the tests
  endif()
endif()

if(KRIOLILGLU_SANITIZE)
  # Their runtimes are left undefined in shared libraries, and do not know _FORTIFY_SOURCE.
  target_compile_options(kriolilglu_flags INTERFACE
    -fsanitize=${KRIOLILGLU_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>) # it needs the C++ runtime
  target_link_options(kriolilglu_flags INTERFACE -fsanitize=${KRIOLILGLU_SANITIZE})
else()
  target_compile_options(kriolilglu_library_flags INTERFACE
    -U_FORTIFY_SOURCE $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  target_link_options(kriolilglu_library_flags INTERFACE LINKER:-z,defs)
endif()
