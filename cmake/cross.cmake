# Toolchain file for Debian's cross compilers; runs the result natively if this machine can,
# otherwise under qemu:
#
#     cmake -S . -B build --toolchain cmake/cross.cmake -DCMAKE_SYSTEM_PROCESSOR=aarch64
#
# or s390x, i686, or any other CPU that g++-CPU-linux-gnu and qemu-user support.

if(NOT CMAKE_SYSTEM_PROCESSOR)
  message(FATAL_ERROR "set the target with -DCMAKE_SYSTEM_PROCESSOR=CPU: aarch64, s390x, i686")
endif()
set(CMAKE_SYSTEM_NAME Linux)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CMAKE_SYSTEM_PROCESSOR)

set(triplet ${CMAKE_SYSTEM_PROCESSOR}-linux-gnu)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

if(CMAKE_SYSTEM_PROCESSOR STREQUAL "i686")
  # The i686 loader finds the i686 libc; not every x86-64 kernel runs it.
  set(CMAKE_CROSSCOMPILING_EMULATOR
    /usr/${triplet}/lib/ld-linux.so.2 --library-path /usr/${triplet}/lib)
  execute_process(COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} --version
    RESULT_VARIABLE failed OUTPUT_QUIET ERROR_QUIET)
  if(failed)
    list(PREPEND CMAKE_CROSSCOMPILING_EMULATOR qemu-i386)
  endif()
else()
  set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${CMAKE_SYSTEM_PROCESSOR} -L /usr/${triplet})
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
    # Pointer authentication by a cheap hash: the CPU's own takes qemu microseconds a call.
    list(APPEND CMAKE_CROSSCOMPILING_EMULATOR -cpu max,pauth-impdef=on)
  endif()
endif()
