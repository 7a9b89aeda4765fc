#!/bin/sh
# exports_test.sh LIBRARY MAP: fails unless the library exports exactly what the map lists.
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

echo "$(wc -l < "$work/exported") exports"
