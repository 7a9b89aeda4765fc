# Toolchain file for Debian's cross compilers; runs the result under qemu:
#
#     cmake -S . -B build --toolchain cmake/cross.cmake -DCMAKE_SYSTEM_PROCESSOR=arm64

# Debian's name of the CPU, the prefix of its compilers, its emulator; scripts/test reads them too.
# arm64 authenticates pointers by a cheap hash; i386 must not find a 32-bit libc of this machine.
set(cpus
  "arm64    aarch64-linux-gnu       qemu-aarch64 -cpu max,pauth-impdef=on"
  "armel    arm-linux-gnueabi       qemu-arm"
  "armhf    arm-linux-gnueabihf     qemu-arm"
  "i386     i686-linux-gnu          qemu-i386 -E LD_LIBRARY_PATH=/usr/i686-linux-gnu/lib"
  "mips64el mips64el-linux-gnuabi64 qemu-mips64el"
  "mipsel   mipsel-linux-gnu        qemu-mipsel"
  "powerpc  powerpc-linux-gnu       qemu-ppc"
  "ppc64el  powerpc64le-linux-gnu   qemu-ppc64le"
  "riscv64  riscv64-linux-gnu       qemu-riscv64"
  "s390x    s390x-linux-gnu         qemu-s390x")
foreach(row IN LISTS cpus)
  separate_arguments(emulator UNIX_COMMAND "${row}")
  list(POP_FRONT emulator cpu triplet)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL cpu OR triplet MATCHES "^${CMAKE_SYSTEM_PROCESSOR}-")
    break()
  endif()
  unset(triplet)
endforeach()
if(NOT triplet)
  message(FATAL_ERROR "set a CPU that cmake/cross.cmake lists: -DCMAKE_SYSTEM_PROCESSOR=arm64")
endif()

set(CMAKE_SYSTEM_NAME Linux)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CMAKE_SYSTEM_PROCESSOR BUILD_TESTING)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

list(GET emulator 0 qemu)
find_program(qemu_path ${qemu} NO_CACHE)
if(qemu_path)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${emulator} -L /usr/${triplet})
elseif(BUILD_TESTING OR NOT DEFINED BUILD_TESTING)
  message(FATAL_ERROR "the tests need ${qemu}: install qemu-user, or set -DBUILD_TESTING=OFF")
endif()
