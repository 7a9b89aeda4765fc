#!/bin/sh
# hardening_test.sh LIBRARY SOURCE_DIR [packed]: reads the effect of compiler and linker flags back
# from the library; "packed" requires packed relocations.
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
        echo "failed: $what"
        failed=1
    fi
}
# shellcheck disable=SC2317 # expect calls it
is_not() { ! "$@"; }

sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' "$work/dynamic" | sort | tr '\n' ' ' > "$work/needed"
expect "it needs only the two platform libraries and libc" \
    grep -qxE '(ld[-a-z0-9]*\.so\.[0-9] )?libc\.so\.6 libkycomp\.so[.0-9]* libkylog\.so[.0-9]* ' \
    "$work/needed"
# What the SDK's own platform libraries export; the rest of their interface is inline.
echo cl_free cl_malloc cl_qcpool_destroy cl_qcpool_get cl_qmap_get cl_qmap_init cl_qmap_insert \
    cl_qmap_remove cl_qmap_remove_item cl_qpool_init cl_spinlock_acquire cl_spinlock_release \
    dbg_utils_print_module_header dbg_utils_print_table_data_line dbg_utils_print_table_headline \
    g_ky_log_module_func_enable ky_log ky_trace_cbuff_log | tr ' ' '\n' > "$work/offered"
sed -n 's/.* U \(cl_\|dbg_\|g_ky_\|ky_\)/\1/p' "$work/imports" | LC_ALL=C sort > "$work/asked"
expect "it imports exactly what the platform libraries export" \
    diff "$work/offered" "$work/asked"
expect "its soname is libkriolilglu.so.1" \
    grep -q '(SONAME).*\[libkriolilglu\.so\.1\]' "$work/dynamic"
expect "it is bound at load (BIND_NOW)" grep -q '(FLAGS_1).*NOW' "$work/dynamic"
expect "relocated data is read-only after load (RELRO)" grep -q GNU_RELRO "$work/segments"
expect "its stack is not executable" grep -qE 'GNU_STACK.* RW +0x' "$work/segments"
expect "no segment is writable and executable" is_not grep -qE 'LOAD.* RWE ' "$work/segments"
expect "it has no thread-local state" is_not grep -q ' TLS ' "$work/segments"
expect "it has no text relocations" is_not grep -q TEXTREL "$work/dynamic"
if [ "$relocations" = packed ]; then
    readelf -rW "$library" > "$work/relocations"
    expect "relative relocations are packed" grep -q ' \.relr\.dyn ' "$work/sections"
    expect "no relative relocation is unpacked" is_not grep -q _RELATIVE "$work/relocations"
fi
expect "no symbol has a version" is_not grep -q '\.gnu\.version_d' "$work/sections"
protected() {
    expect "indirect branches and returns are protected" grep -q "$1" "$work/notes"
}
case $(readelf -hW "$library") in
*X86-64*)
    protected 'x86 feature: IBT, SHSTK'
    if objdump -d --no-show-raw-insn "$library" > "$work/code" 2> /dev/null; then
        # Atomics are relaxed, and the lock is the component library's; xchg with memory locks, too.
        expect "no instruction is locked, and none is a fence" is_not \
            grep -E '[[:space:]](lock|[lms]fence|xchg .*\(.*)([[:space:]]|$)' "$work/code"
    fi
    ;;
*AArch64*) protected 'AArch64 feature: BTI, PAC' ;;
esac
expect "no code runs at load or unload" is_not \
    grep -E '\((INIT|FINI|[A-Z_]*_ARRAY)\)' "$work/dynamic"
expect "no import is weak or registers code to run at unload" is_not \
    grep -E ' [wv] |__cxa_' "$work/imports"
expect "it contains no path of the build machine" is_not grep -qF "$source_dir/" "$library"
expect "functions with arrays have a stack protector" grep -q '__stack_chk_fail' "$work/imports"
if [ -e "$(dirname "$library")/libkylog.so" ]; then
    nm -D --undefined-only "$(dirname "$library")/libkylog.so" > "$work/imports"
    expect "formatted output is fortified" grep -q '_chk' "$work/imports"
fi
# GCC records its options in the debug information, if present; clang does not.
if readelf --debug-dump=info "$library" | grep 'GNU C++' > "$work/options"; then
    expect "stack frames are probed" is_not grep -vq -e '-fstack-clash-protection' "$work/options"
fi
exit "$failed"
