#!/bin/sh
# hardening_test.sh LIBRARY COMMAND SOURCE_DIR [packed]: reads the effect of compiler and linker flags
# back from the library, and from the command; "packed" requires packed relocations.
set -eu

library=$1
command=$2
source_dir=$3
relocations=${4-}
report=$(mktemp)
trap 'rm -f "$report"' EXIT
export LC_ALL=C
failed=0

fails() { # WHAT
    echo "failed: $1"
    failed=1
}
has() { # WHAT PATTERN: a line of the report matches
    grep -qE "$2" "$report" || fails "$1"
}
lacks() { # WHAT PATTERN
    ! grep -qE "$2" "$report" || fails "$1"
}

nm -D --undefined-only "$library" > "$report"
asked=$(sed -n 's/.* U \(cl_\|dbg_\|g_ky_\|ky_\)/\1/p' "$report" | sort | xargs)
readelf -hdlnrSW "$library" >> "$report"
needed=$(sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' "$report" | sort | xargs)
{
    echo "needed: $needed"
    echo "asked: $asked"
    objdump -d --no-show-raw-insn "$library" 2> /dev/null || true # if it knows this CPU
    # GCC records its options in the debug information, if present; clang does not.
    readelf --debug-dump=info "$library" | grep 'GNU C++' || true
} >> "$report"

has "it needs only the two platform libraries and libc" \
    '^needed: (ld[-a-z0-9]*\.so\.[0-9] )?libc\.so\.6 libkycomp\.so[.0-9]* libkylog\.so[.0-9]*$'
# What the SDK's own platform libraries export; the rest of their interface is inline.
offered="cl_free cl_malloc cl_qcpool_destroy cl_qcpool_get cl_qmap_get cl_qmap_init cl_qmap_insert \
cl_qmap_remove cl_qmap_remove_item cl_qpool_init cl_spinlock_acquire cl_spinlock_release \
dbg_utils_print_module_header dbg_utils_print_table_data_line dbg_utils_print_table_headline \
g_ky_log_module_func_enable ky_log ky_trace_cbuff_log"
has "it imports exactly what the platform libraries export" "^asked: $offered\$"
has "its soname is libkriolilglu.so.1" '\(SONAME\).*\[libkriolilglu\.so\.1\]'
has "it is bound at load (BIND_NOW)" '\(FLAGS_1\).*NOW'
has "relocated data is read-only after load (RELRO)" GNU_RELRO
has "its stack is not executable" 'GNU_STACK.* RW +0'
lacks "no segment is writable and executable" 'LOAD.* RWE '
lacks "it has no thread-local state" ' TLS '
lacks "it has no text relocations" TEXTREL
if [ "$relocations" = packed ]; then
    has "relative relocations are packed" ' \.relr\.dyn '
    lacks "no relative relocation is unpacked" _RELATIVE
fi
lacks "no symbol has a version" '\.gnu\.version_d'
if grep -qE 'Machine: .*(X86-64|AArch64)' "$report"; then
    has "indirect branches and returns are protected" \
        'x86 feature: IBT, SHSTK|AArch64 feature: BTI, PAC'
    # Atomics are relaxed, and the lock is the component library's; xchg with memory locks, too.
    lacks "no instruction is locked, and none is a fence" \
        '[[:space:]](lock|[lms]fence|xchg .*\(.*)([[:space:]]|$)'
fi
lacks "no code runs at load or unload" '\((INIT|FINI|[A-Z_]*_ARRAY)\)'
lacks "no import is weak or registers code to run at unload" '^ +[wv] |__cxa_'
has "functions with arrays have a stack protector" 'U __stack_chk_fail'
! grep 'GNU C++' "$report" | grep -qv -e -fstack-clash-protection || fails "stack frames are probed"
! grep -qF "$source_dir/" "$library" || fails "it contains no path of the build machine"
readelf -dW "$command" | grep -q '(FLAGS_1).*NOW PIE' ||
    fails "the command, too, is bound at load, to any address"
kylog=$(dirname "$library")/libkylog.so
if [ -e "$kylog" ]; then
    nm -D --undefined-only "$kylog" | grep -q _chk || fails "formatted output is fortified"
fi
exit "$failed"
