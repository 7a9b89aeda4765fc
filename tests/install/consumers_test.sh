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

fail() { # MESSAGE
    echo "$1"
    exit 1
}

quietly() {
    "$@" > "$work/log" 2>&1 || fail "$(cat "$work/log")"
}

make_in() { # FOLDER CMAKE_ARGUMENT...
    folder=$work/$1
    shift
    quietly cmake -B "$folder" "$@"
    quietly cmake --build "$folder"
}

libdir() { # PREFIX LIBRARY
    dirname "$(find "$1" -name "$2")"
}

runs() { # WHAT PROGRAM LIBRARY_PATH
    LD_LIBRARY_PATH=$3 "$2" > /dev/null 2>&1 || fail "$1 does not run"
}

strict='-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wcast-qual -Wundef
    -Wformat=2 -Wunused-const-variable -Werror'

# shellcheck disable=SC2046,SC2086 # lists of words
builds() { # COMPILER ARGUMENT...: a program, with the flags of pkg-config
    quietly "$@" $strict $(pkg-config --cflags --libs kriolilglu) -o "$work/program"
}

# shellcheck disable=SC2046,SC2086 # lists of words
each_header() { # LANGUAGE COMPILER FLAG...: compiles each header alone
    file=$work/header.$1
    shift
    for header in $headers; do
        echo "#include \"$header\"" > "$file"
        quietly "$@" $strict $(pkg-config --cflags kriolilglu) -c -o "$work/header.o" "$file"
    done
}

quietly cmake --install "$build" --prefix "$work/first"
mv "$work/first" "$work/moved"
lib=$(libdir "$work/moved" libkriolilglu.so)
log_module=$source/tests/utils/log_module.c # every use of the macros
headers="$(find "$work/moved" -name '*.h') $log_module"
export PKG_CONFIG_PATH="$lib/pkgconfig"

"$source/tests/abi/exports_test.sh" "$lib/libkriolilglu.so.1" "$source/abi/kriolilglu.map"
"$source/tests/abi/hardening_test.sh" "$lib/libkriolilglu.so.1" "$work/moved/bin/kriolilglu" \
    "$source"
"$work/moved/bin/kriolilglu" status 0 > /dev/null || fail "the command does not run"

# shellcheck disable=SC2046 # a list of words
version=$(echo KRIOLILGLU_VERSION_MAJOR.KRIOLILGLU_VERSION_MINOR.KRIOLILGLU_VERSION_PATCH |
    gcc $(pkg-config --cflags kriolilglu) -include ky_common.h -E -P -x c - | tail -n 1 | tr -d ' ')
stated="$(pkg-config --modversion kriolilglu) $(readlink "$lib/libkriolilglu.so.1")"
[ "$stated" = "$version libkriolilglu.so.$version" ] ||
    fail "version $version in the headers, $stated elsewhere"

for compiler in gcc clang g++ clang++; do
    case $compiler in
    *++) language=c++ standards='c++11 c++14 c++17 c++20 c++2b' more=-Wold-style-cast ;;
    *) language=c standards='c99 c11 gnu11 c17 c2x' more=-Wc++-compat ;;
    esac
    for standard in $standards; do
        set -- "$compiler" "-std=$standard"
        builds "$@" -x "$language" "$source/examples/iptv.c" "$log_module" -x none
        runs "$*" "$work/program" "$lib"
        each_header "$language" "$@" "$more"
    done
done
each_header c musl-gcc

# The compilers compare a message's values with its format.
sed 's/"%u is wrong.n", \*number/"%u is wrong\\n", number/' "$log_module" > "$work/wrong.c"
for compiler in gcc clang g++ clang++; do
    ! (builds "$compiler" -I "$source/tests/utils" -c "$work/wrong.c") > /dev/null ||
        fail "$compiler accepts a value that is not of its format"
done

# A compiler without __FILE_NAME__, as older ones are, draws one error.
# shellcheck disable=SC2046 # a list of words
gcc -U__FILE_NAME__ $(pkg-config --cflags kriolilglu) -fsyntax-only "$log_module" 2> "$work/log" ||
    true
[ "$(grep 'error: ' "$work/log" | cut -d'"' -f2)" = \
    "this header takes GCC 12, clang 14, or a later version" ] || fail "$(cat "$work/log")"

# AddressSanitizer in the program, then in the library.
set -- -I "$source/tests/support" "$here/pools.cpp"
for compiler in g++ clang++; do
    builds "$compiler" -fsanitize=address "$@"
    runs "$compiler -fsanitize=address" "$work/program" "$lib"
    for fault in program library never twice; do
        LD_LIBRARY_PATH=$lib "$work/program" $fault 2>&1 | grep -q use-after-poison ||
            fail "$compiler -fsanitize=address does not report '$fault'"
    done
done
make_in sanitized -S "$source" -DBUILD_TESTING=OFF -DKRIOLILGLU_SANITIZE=address
builds g++ "$@"
LD_PRELOAD=$(gcc -print-file-name=libasan.so) \
    runs "a program on a library with AddressSanitizer" "$work/program" "$work/sanitized"

found_by_cmake() { # WHAT LIBRARY_PATH CMAKE_ARGUMENT...
    what=$1
    path=$2
    shift 2
    rm -rf "$work/cmake"
    make_in cmake -S "$here" "$@"
    runs "$what from C" "$work/cmake/consumer-c" "$path"
    runs "$what from C++" "$work/cmake/consumer-cpp" "$path"
}

found_by_cmake "a moved installation" "$lib" -DCMAKE_PREFIX_PATH="$work/moved"

# Other folders: an absolute one of the library, and those of the headers and of the command.
make_in other -S "$source" -DBUILD_TESTING=OFF -DCMAKE_INSTALL_PREFIX="$work/other-prefix" \
    -DCMAKE_INSTALL_LIBDIR="$work/lib64/switch" -DCMAKE_INSTALL_INCLUDEDIR=headers \
    -DCMAKE_INSTALL_BINDIR=bin/switch
quietly cmake --install "$work/other"
found_by_cmake "an installation with other folders" "" \
    -Dkriolilglu_DIR="$work/lib64/switch/cmake/kriolilglu"
"$work/other-prefix/bin/switch/kriolilglu" status 0 > /dev/null ||
    fail "the command does not run from another folder"

# The SDK's platform libraries in a prefix of their own: here the stand-ins, which the source tree
# then lacks.
quietly cmake --install "$build" --prefix "$work/sdk" --component platform
mkdir "$work/source"
tar -c -C "$source" --exclude=./build --exclude=./.git --exclude=./platform . |
    tar -x -C "$work/source"
rm -rf "$work/moved"
make_in system -S "$work/source" -DBUILD_TESTING=OFF \
    -DKRIOLILGLU_PLATFORM=system -DCMAKE_PREFIX_PATH="$work/sdk"
quietly cmake --install "$work/system" --prefix "$work/ours"
lib=$(libdir "$work/ours" libkriolilglu.so)
path=$lib:$(libdir "$work/sdk" libkylog.so)
found_by_cmake "a library on the SDK's platform" "$path" -DCMAKE_PREFIX_PATH="$work/ours;$work/sdk"
export PKG_CONFIG_PATH="$lib/pkgconfig"
builds gcc "$source/examples/iptv.c"
runs "a library on the SDK's platform, by pkg-config" "$work/program" "$path"
