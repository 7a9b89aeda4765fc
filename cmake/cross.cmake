# Builds for another CPU by Debian's cross compilers, and runs what is built:
#
#     cmake -S . -B build --toolchain cmake/cross.cmake -DCMAKE_SYSTEM_PROCESSOR=aarch64
#
# or s390x, or i686, or whatever else g++-CPU-linux-gnu and qemu-user know.

if(NOT CMAKE_SYSTEM_PROCESSOR)
  message(FATAL_ERROR "-DCMAKE_SYSTEM_PROCESSOR=CPU says which CPU to build for: aarch64, s390x, i686")
endif()
set(CMAKE_SYSTEM_NAME Linux)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CMAKE_SYSTEM_PROCESSOR)

set(triplet ${CMAKE_SYSTEM_PROCESSOR}-linux-gnu)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

if(CMAKE_SYSTEM_PROCESSOR STREQUAL "i686" AND CMAKE_HOST_SYSTEM_PROCESSOR STREQUAL "x86_64")
  # The machine runs it itself; its own loader finds its own libc.
  set(CMAKE_CROSSCOMPILING_EMULATOR
    /usr/${triplet}/lib/ld-linux.so.2 --library-path /usr/${triplet}/lib)
else()
  string(REPLACE "i686" "i386" cpu ${CMAKE_SYSTEM_PROCESSOR})
  set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${cpu} -L /usr/${triplet})
endif()
