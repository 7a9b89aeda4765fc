#!/bin/sh
# exports_test.sh LIBRARY MAP: the library exports what the map lists and nothing else, its data
# objects with the sizes that programs have copied.
set -eu

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sed -n 's/^ *\([a-z_][a-z0-9_]*\);$/\1/p' "$2" | sort > "$work/listed"
nm -D --defined-only "$1" | awk '{ print $3 }' | sort > "$work/exported"
if ! diff "$work/listed" "$work/exported" > "$work/difference"; then
    echo "listed in $2 (<) but not exported, or exported (>) but not listed:"
    cat "$work/difference"
    exit 1
fi

# Every other export is code. Programs have copied the objects; their sizes are x86-64's.
expected='port_type_validation_table utils_mem_type_count_lock'
sizes=
if readelf -hW "$1" | grep -q X86-64; then
    expected='port_type_validation_table 0000000000000ae0 utils_mem_type_count_lock 0000000000000030'
    sizes=1
fi
objects=$(nm -D --defined-only -S "$1" |
    awk -v sizes="$sizes" '$3 != "T" { print $4, (sizes ? $2 : "") }' | sort | xargs)
if [ "$objects" != "$expected" ]; then
    echo "the exported data objects are $objects, not $expected"
    exit 1
fi
echo "$(wc -l < "$work/exported") exports"
