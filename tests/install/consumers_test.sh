#!/bin/sh
# consumers_test.sh BUILD SOURCE: installs a build, moves the installation, and builds and runs
# programs against it: through pkg-config and find_package, in every C and C++ standard, with each
# compiler and under AddressSanitizer; then the library itself against installed platform libraries.
set -eu

build=$1
source=$2
here=$source/tests/install
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export CMAKE_GENERATOR=Ninja # make may be absent

quietly() {
    "$@" > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
}

programs=0
runs() { # WHAT PROGRAM LIBRARY_PATH
    LD_LIBRARY_PATH=$3 "$2" > /dev/null 2>&1 || { echo "$1 does not run"; exit 1; }
    programs=$((programs + 1))
}

libdir() { # PREFIX LIBRARY
    dirname "$(find "$1" -name "$2")"
}

quietly cmake --install "$build" --prefix "$work/first"
mv "$work/first" "$work/moved"
lib=$(libdir "$work/moved" libkriolilglu.so)

"$source/tests/abi/exports_test.sh" "$lib/libkriolilglu.so.1" "$source/abi/kriolilglu.map"
"$source/tests/abi/hardening_test.sh" "$lib/libkriolilglu.so.1" "$source"
"$work/moved/bin/kriolilglu" status 0 > /dev/null || { echo "the command does not run"; exit 1; }

export PKG_CONFIG_PATH="$lib/pkgconfig"
cflags=$(pkg-config --cflags kriolilglu)
flags="$cflags $(pkg-config --libs kriolilglu)"
strict='-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wcast-qual -Wundef
    -Wformat=2 -Wunused-const-variable -Werror'

# shellcheck disable=SC2086 # a list of words
version=$(echo KRIOLILGLU_VERSION_MAJOR.KRIOLILGLU_VERSION_MINOR.KRIOLILGLU_VERSION_PATCH |
    gcc $cflags -include ky_common.h -E -P -x c - | tail -n 1 | tr -d ' ')
stated="$(pkg-config --modversion kriolilglu) $(readlink "$lib/libkriolilglu.so.1")"
if [ "$stated" != "$version libkriolilglu.so.$version" ]; then
    echo "version $version in the headers, $stated elsewhere"
    exit 1
fi

# The module, and each header alone.
in_every_standard() { # LANGUAGE "COMPILER..." "STANDARD..." FLAG...
    language=$1
    compilers=$2
    standards=$3
    shift 3
    for compiler in $compilers; do
        for standard in $standards; do
            # shellcheck disable=SC2086 # lists of words
            quietly "$compiler" "-std=$standard" $strict "$@" "$here/consumer.$language" $flags \
                -o "$work/program"
            runs "$compiler -std=$standard" "$work/program" "$lib"
            for header in $headers; do
                echo "#include \"$header\"" > "$work/header.$language"
                # shellcheck disable=SC2086 # lists of words
                quietly "$compiler" "-std=$standard" $strict "$@" $cflags -c -o "$work/header.o" \
                    "$work/header.$language"
            done
        done
    done
}
headers=$(find "$work/moved" -name '*.h')
in_every_standard c 'gcc clang' 'c99 c11 gnu11 c17 c2x'
in_every_standard cpp 'g++ clang++' 'c++11 c++14 c++17 c++20 c++2b' -Wold-style-cast
for header in $headers; do
    # shellcheck disable=SC2086 # a list of words
    echo "#include \"$header\"" |
        quietly musl-gcc -Wall -Wextra -Werror $cflags -fsyntax-only -x c -
done

# AddressSanitizer in the program, then in the library.
for compiler in gcc clang; do
    # shellcheck disable=SC2086 # lists of words
    quietly $compiler $strict -fsanitize=address "$here/pools.c" $flags -o "$work/program"
    runs "$compiler -fsanitize=address" "$work/program" "$lib"
    for fault in program library never twice; do
        if LD_LIBRARY_PATH=$lib "$work/program" $fault > /dev/null 2> "$work/report" ||
            ! grep -q use-after-poison "$work/report"; then
            echo "$compiler -fsanitize=address does not report '$fault'"
            exit 1
        fi
    done
done
quietly cmake -S "$source" -B "$work/sanitized" -DBUILD_TESTING=OFF -DKRIOLILGLU_SANITIZE=address
quietly cmake --build "$work/sanitized"
# shellcheck disable=SC2086 # lists of words
quietly gcc $strict "$here/pools.c" $flags -o "$work/program"
LD_PRELOAD=$(gcc -print-file-name=libasan.so) \
    runs "a program on a library with AddressSanitizer" "$work/program" "$work/sanitized"

found_by_cmake() { # WHAT LIBRARY_PATH CMAKE_ARGUMENT...
    what=$1
    path=$2
    shift 2
    rm -rf "$work/cmake"
    quietly cmake -S "$here" -B "$work/cmake" "$@"
    quietly cmake --build "$work/cmake"
    runs "$what from C" "$work/cmake/consumer-c" "$path"
    runs "$what from C++" "$work/cmake/consumer-cpp" "$path"
}

found_by_cmake "a moved installation" "$lib" -DCMAKE_PREFIX_PATH="$work/moved"

# Non-default library and header folders.
quietly cmake -S "$source" -B "$work/other" -DBUILD_TESTING=OFF \
    -DCMAKE_INSTALL_LIBDIR=lib64/switch -DCMAKE_INSTALL_INCLUDEDIR=headers
quietly cmake --build "$work/other"
quietly cmake --install "$work/other" --prefix "$work/other-prefix"
found_by_cmake "an installation with other folders" "" \
    -Dkriolilglu_DIR="$work/other-prefix/lib64/switch/cmake/kriolilglu"

# The SDK's platform libraries in a prefix of their own: here the stand-ins, which the source tree
# then lacks.
quietly cmake --install "$build" --prefix "$work/sdk" --component platform
mkdir "$work/source"
tar -c -C "$source" --exclude=./build --exclude=./.git --exclude=./platform . |
    tar -x -C "$work/source"
rm -rf "$work/moved"
quietly cmake -S "$work/source" -B "$work/system" -DBUILD_TESTING=OFF \
    -DKRIOLILGLU_PLATFORM=system -DCMAKE_PREFIX_PATH="$work/sdk"
quietly cmake --build "$work/system"
quietly cmake --install "$work/system" --prefix "$work/ours"
lib=$(libdir "$work/ours" libkriolilglu.so)
path=$lib:$(libdir "$work/sdk" libkylog.so)
found_by_cmake "a library on the SDK's platform" "$path" -DCMAKE_PREFIX_PATH="$work/ours;$work/sdk"
export PKG_CONFIG_PATH="$lib/pkgconfig"
# shellcheck disable=SC2046 # lists of words
quietly gcc "$here/consumer.c" $(pkg-config --cflags --libs kriolilglu) -o "$work/program"
runs "a library on the SDK's platform, by pkg-config" "$work/program" "$path"

echo "$programs programs built against an installation and run"
