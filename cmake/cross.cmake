# Toolchain file for Debian's cross compilers; runs the result under qemu or natively:
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

if(CMAKE_SYSTEM_PROCESSOR STREQUAL "i686" AND CMAKE_HOST_SYSTEM_PROCESSOR STREQUAL "x86_64")
  # Runs natively; the i686 loader finds the i686 libc.
  set(CMAKE_CROSSCOMPILING_EMULATOR
    /usr/${triplet}/lib/ld-linux.so.2 --library-path /usr/${triplet}/lib)
else()
  string(REPLACE "i686" "i386" cpu ${CMAKE_SYSTEM_PROCESSOR})
  set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${cpu} -L /usr/${triplet})
endif()
