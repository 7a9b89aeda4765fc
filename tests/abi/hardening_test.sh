#!/bin/sh
# hardening_test.sh LIBRARY SOURCE_DIR [packed]: what was asked of the compiler and the linker, read
# back from the library; "packed", if relocations were to be.
set -eu

library=$1
source_dir=$2
relocations=${3-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
readelf -dW "$library" > "$work/dynamic"
readelf -lW "$library" > "$work/segments"
readelf -SW "$library" > "$work/sections"
readelf -nW "$library" > "$work/notes"
nm -D --undefined-only "$library" > "$work/imports"
failed=0

expect() { # WHAT [is_not] COMMAND...
    what=$1
    shift
    if ! "$@" > /dev/null; then
        echo "not so: $what"
        failed=1
    fi
}
# shellcheck disable=SC2317 # expect calls it
is_not() { ! "$@"; }

sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' "$work/dynamic" | sort | tr '\n' ' ' > "$work/needed"
expect "it needs the two platform libraries and libc alone" \
    grep -qxE '(ld[-a-z0-9]*\.so\.[0-9] )?libc\.so\.6 libkycomp\.so[.0-9]* libkylog\.so[.0-9]* ' \
    "$work/needed"
# What the SDK's own platform libraries have; all else of theirs is inline.
echo cl_free cl_malloc cl_qcpool_destroy cl_qcpool_get cl_qmap_get cl_qmap_init cl_qmap_insert \
    cl_qmap_remove cl_qmap_remove_item cl_qpool_init cl_spinlock_acquire cl_spinlock_release \
    dbg_utils_print_module_header dbg_utils_print_table_data_line dbg_utils_print_table_headline \
    g_ky_log_module_func_enable ky_log ky_trace_cbuff_log | tr ' ' '\n' > "$work/offered"
sed -n 's/.* U \(cl_\|dbg_\|g_ky_\|ky_\)/\1/p' "$work/imports" | LC_ALL=C sort > "$work/asked"
expect "it asks for what the platform libraries have, and no more" \
    diff "$work/offered" "$work/asked"
expect "its soname is libkriolilglu.so.1" \
    grep -q '(SONAME).*\[libkriolilglu\.so\.1\]' "$work/dynamic"
expect "it is bound when it is loaded" grep -q '(FLAGS_1).*NOW' "$work/dynamic"
expect "what relocation wrote is read-only afterwards" grep -q GNU_RELRO "$work/segments"
expect "its stack is not executable" grep -qE 'GNU_STACK.* RW +0x' "$work/segments"
expect "no segment is writable and executable" is_not grep -qE 'LOAD.* RWE ' "$work/segments"
expect "no thread has a state of its own" is_not grep -q ' TLS ' "$work/segments"
expect "no relocation writes to code" is_not grep -q TEXTREL "$work/dynamic"
if [ "$relocations" = packed ]; then
    readelf -rW "$library" > "$work/relocations"
    expect "relative relocations are packed" grep -q ' \.relr\.dyn ' "$work/sections"
    expect "all of them are" is_not grep -q _RELATIVE "$work/relocations"
fi
expect "no symbol has a version" is_not grep -q '\.gnu\.version_d' "$work/sections"
protected() {
    expect "indirect branches and returns are protected" grep -q "$1" "$work/notes"
}
case $(readelf -hW "$library") in
*X86-64*) protected 'x86 feature: IBT, SHSTK' ;;
*AArch64*) protected 'AArch64 feature: BTI, PAC' ;;
esac
expect "nothing runs when it is loaded or unloaded" is_not \
    grep -E '\((INIT|FINI|[A-Z_]*_ARRAY)\)' "$work/dynamic"
expect "no import is weak, and none registers what runs at unload" is_not \
    grep -E ' [wv] |__cxa_' "$work/imports"
expect "no path of the build machine is in it" is_not grep -qF "$source_dir/" "$library"
expect "functions with arrays guard their stack" grep -q '__stack_chk_fail' "$work/imports"
if [ -e "$(dirname "$library")/libkylog.so" ]; then
    nm -D --undefined-only "$(dirname "$library")/libkylog.so" > "$work/imports"
    expect "formatted output is checked" grep -q '_chk' "$work/imports"
fi
# GCC records its options beside the debug information, if there is any; clang does not.
if readelf --debug-dump=info "$library" | grep 'GNU C++' > "$work/options"; then
    expect "stack frames are probed" is_not grep -vq -e '-fstack-clash-protection' "$work/options"
fi
exit "$failed"
