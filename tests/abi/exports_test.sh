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

# Every other export is code.
cat > "$work/objects" <<END
port_type_validation_table 2784
utils_mem_type_count_lock 48
END
nm -D --defined-only -S "$1" | awk '$3 != "T" { print $4, $2 }' | while read -r name size; do
    echo "$name $((0x$size))"
done | sort > "$work/data"
if ! diff "$work/objects" "$work/data"; then
    echo "the exported data objects or their sizes are not those expected (<)"
    exit 1
fi
echo "$(wc -l < "$work/exported") exports, $(wc -l < "$work/data") of them data"
