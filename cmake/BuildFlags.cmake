# Three interface targets, each of which includes the one before: kriolilglu_flags for everything
# built here, kriolilglu_shipped_flags for what ships, and kriolilglu_library_flags for libraries. A
# flag that the compiler or the linker does not support for this CPU is left out.

include(CheckCompilerFlag)
include(CheckLinkerFlag)

function(compile_with target) # FLAG...
  set(CMAKE_REQUIRED_FLAGS -Werror) # clang only warns about an unused flag
  check_compiler_flag(CXX -Wall KRIOLILGLU_GIVEN_FLAGS_ARE_SILENT)
  if(NOT KRIOLILGLU_GIVEN_FLAGS_ARE_SILENT)
    set(CMAKE_CXX_FLAGS "") # their warnings would fail every probe
  endif()
  foreach(flag IN LISTS ARGN)
    string(REGEX REPLACE "=.*/.*" "=from=to" probe "${flag}") # probe without the paths
    string(MAKE_C_IDENTIFIER "KRIOLILGLU_COMPILES_WITH_${probe}" is_known)
    check_compiler_flag(CXX ${probe} ${is_known})
    if(${is_known})
      target_compile_options(${target} INTERFACE ${flag})
    endif()
  endforeach()
endfunction()

function(link_with target) # FLAG...
  foreach(flag IN LISTS ARGN)
    string(MAKE_C_IDENTIFIER "KRIOLILGLU_LINKS_WITH_${flag}" is_known)
    check_linker_flag(C ${flag} ${is_known})
    if(${is_known})
      target_link_options(${target} INTERFACE ${flag})
    endif()
  endforeach()
endfunction()

add_library(kriolilglu_flags INTERFACE)
compile_with(kriolilglu_flags
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
  # The binary does not depend on the location of the tree.
  "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=." "-ffile-prefix-map=${PROJECT_BINARY_DIR}=.")

add_library(kriolilglu_shipped_flags INTERFACE)
target_link_libraries(kriolilglu_shipped_flags INTERFACE kriolilglu_flags)
compile_with(kriolilglu_shipped_flags
  -Wmissing-declarations
  -fno-plt # symbols are bound at load, so a PLT has no use
  -fstack-protector-strong -fstack-clash-protection
  -fcf-protection=full -mbranch-protection=standard) # x86, Arm
link_with(kriolilglu_shipped_flags LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)

add_library(kriolilglu_library_flags INTERFACE)
target_link_libraries(kriolilglu_library_flags INTERFACE kriolilglu_shipped_flags)
compile_with(kriolilglu_library_flags
  -fno-exceptions -fno-rtti
  -fsemantic-interposition) # clang assumes that nothing is interposed
link_with(kriolilglu_library_flags
  # A DT_NEEDED entry for every library linked; Debian's gcc would omit libc's.
  LINKER:--no-as-needed)

# The compiler's start files run code at load, although there is nothing to do, and lack the
# control-flow protection marks.
option(KRIOLILGLU_START_FILES "Link the compiler's start files, for runtimes that need them" OFF)
if(NOT KRIOLILGLU_START_FILES)
  link_with(kriolilglu_library_flags -nostartfiles)
endif()

option(KRIOLILGLU_PACK_RELOCATIONS
  "Pack relative relocations, if this machine's loader supports them" ON)
if(KRIOLILGLU_PACK_RELOCATIONS AND (CMAKE_CROSSCOMPILING_EMULATOR OR NOT CMAKE_CROSSCOMPILING))
  include(CheckSourceRuns)
  include(CMakePushCheckState)
  cmake_push_check_state(RESET)
  set(CMAKE_REQUIRED_FLAGS -fPIE) # otherwise nothing is relocated
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
  # Sanitizer runtimes stay undefined in shared libraries, and do not support _FORTIFY_SOURCE.
  target_compile_options(kriolilglu_flags INTERFACE
    -fsanitize=${KRIOLILGLU_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>) # needs the C++ runtime
  target_link_options(kriolilglu_flags INTERFACE -fsanitize=${KRIOLILGLU_SANITIZE})
else()
  target_compile_options(kriolilglu_shipped_flags INTERFACE
    -U_FORTIFY_SOURCE $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  link_with(kriolilglu_library_flags LINKER:-z,defs)
endif()
