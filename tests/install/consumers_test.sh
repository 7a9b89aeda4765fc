#!/bin/sh
# consumers_test.sh BUILD SOURCE: installs a build, moves the installation, and builds and runs
# programs against it: by pkg-config and by find_package, as C and C++, with each compiler; the
# README's example; and the library itself, on top of the installed platform library.
set -eu

build=$1
source=$2
here=$source/tests/install
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/first" > /dev/null
mv "$work/first" "$work/moved"
lib=$(dirname "$(find "$work/moved" -name libkriolilglu.so)")

"$source/tests/abi/exports_test.sh" "$lib/libkriolilglu.so.1" "$source/abi/kriolilglu.map"
"$source/tests/abi/hardening_test.sh" "$lib/libkriolilglu.so.1" "$source"

flags=$(PKG_CONFIG_PATH=$lib/pkgconfig pkg-config --cflags --libs kriolilglu)
strict='-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror'
runs() { # WHAT PROGRAM
    LD_LIBRARY_PATH=$lib "$2" > /dev/null 2>&1 || { echo "$1 does not run"; exit 1; }
    programs=$((programs + 1))
}
programs=0
for version in 'gcc -std=c11' 'gcc -std=gnu11' 'clang -std=c11' 'clang -std=c17'; do
    # shellcheck disable=SC2086 # lists of words
    $version $strict "$here/consumer.c" $flags -o "$work/program"
    runs "$version" "$work/program"
done
for version in 'g++ -std=c++11' 'g++ -std=c++17' 'clang++ -std=c++14' 'clang++ -std=c++20'; do
    # shellcheck disable=SC2086 # lists of words
    $version $strict "$here/consumer.cpp" $flags -o "$work/program"
    runs "$version" "$work/program"
done

cmake -S "$here" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$work/moved" > /dev/null
cmake --build "$work/cmake" > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
runs "find_package from C" "$work/cmake/consumer-c"
runs "find_package from C++" "$work/cmake/consumer-cpp"

# shellcheck disable=SC2016 # the backquotes are the README's
sed -n '/^```c$/,/^```$/p' "$source/README.md" | sed '/^```/d' > "$work/readme.c"
# shellcheck disable=SC2086 # a list of words
cc $strict "$work/readme.c" $flags -o "$work/program"
runs "the README's example" "$work/program"

cmake --install "$build" --prefix "$work/sdk" --component platform > /dev/null
cmake -S "$source" -B "$work/system" -DBUILD_TESTING=OFF -DKRIOLILGLU_PLATFORM=system \
    -DCMAKE_PREFIX_PATH="$work/sdk" > /dev/null
cmake --build "$work/system" > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
test ! -e "$work/system/libkylog.so" || { echo "the stand-in was built all the same"; exit 1; }
cmake --install "$work/system" --prefix "$work/ours" > /dev/null
cmake -S "$here" -B "$work/cmake-system" -DCMAKE_PREFIX_PATH="$work/ours;$work/sdk" > /dev/null
cmake --build "$work/cmake-system" > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
LD_LIBRARY_PATH=$work/sdk/lib runs "a program on the SDK's platform library" \
    "$work/cmake-system/consumer-c"

echo "$programs programs built against a moved installation and run"
