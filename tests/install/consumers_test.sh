#!/bin/sh
# consumers_test.sh BUILD SOURCE: installs a build, moves the installation, and builds and runs
# programs against it: by pkg-config and by find_package, as C and C++, with each compiler; the
# README's example; and the library itself, on top of an installed platform library.
set -eu

build=$1
source=$2
here=$source/tests/install
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export CMAKE_GENERATOR=Ninja # make need not be there

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

export PKG_CONFIG_PATH="$lib/pkgconfig"
cflags=$(pkg-config --cflags kriolilglu)
flags="$cflags $(pkg-config --libs kriolilglu)"
strict='-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror'

# shellcheck disable=SC2086 # a list of words
version=$(echo KRIOLILGLU_VERSION_MAJOR.KRIOLILGLU_VERSION_MINOR.KRIOLILGLU_VERSION_PATCH |
    gcc $cflags -include ky_common.h -E -P -x c - | tail -n 1 | tr -d ' ')
stated="$(pkg-config --modversion kriolilglu) $(readlink "$lib/libkriolilglu.so.1")"
if [ "$stated" != "$version libkriolilglu.so.$version" ]; then
    echo "the headers say $version, the others $stated"
    exit 1
fi

# shellcheck disable=SC2086 # lists of words
for compiler in 'gcc -std=c11' 'gcc -std=gnu11' 'clang -std=c11' 'clang -std=c17'; do
    quietly $compiler $strict "$here/consumer.c" $flags -o "$work/program"
    quietly $compiler $strict $cflags -fsyntax-only "$source/tests/abi/layout_test.c"
    runs "$compiler" "$work/program" "$lib"
done
# shellcheck disable=SC2086 # lists of words
for compiler in 'g++ -std=c++11' 'g++ -std=c++17' 'clang++ -std=c++14' 'clang++ -std=c++20'; do
    quietly $compiler $strict -Wold-style-cast "$here/consumer.cpp" $flags -o "$work/program"
    quietly $compiler $strict $cflags -fsyntax-only -x c++ "$source/tests/abi/layout_test.c"
    runs "$compiler" "$work/program" "$lib"
done

# shellcheck disable=SC2016 # the backquotes are the README's
sed -n '/^```c$/,/^```$/p' "$source/README.md" | sed '/^```/d' > "$work/readme.c"
# shellcheck disable=SC2086 # lists of words
quietly cc $strict "$work/readme.c" $flags -o "$work/program"
runs "the README's example" "$work/program" "$lib"

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

# Library folders of other names.
quietly cmake -S "$source" -B "$work/other" -DBUILD_TESTING=OFF \
    -DCMAKE_INSTALL_LIBDIR=lib64/switch -DCMAKE_INSTALL_INCLUDEDIR=headers
quietly cmake --build "$work/other"
quietly cmake --install "$work/other" --prefix "$work/other-prefix"
found_by_cmake "an installation with other folders" "" \
    -Dkriolilglu_DIR="$work/other-prefix/lib64/switch/cmake/kriolilglu"

# The SDK's platform libraries, in a prefix of their own: here the stand-ins play them, and are not
# in the tree that is built.
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
# shellcheck disable=SC2046 # lists of words
quietly gcc "$here/consumer.c" $(PKG_CONFIG_PATH=$lib/pkgconfig pkg-config --cflags --libs kriolilglu) \
    -o "$work/program"
runs "a library on the SDK's platform, by pkg-config" "$work/program" "$path"

echo "$programs programs built against an installation and run"
