#!/bin/sh
# exports_test.sh LIBRARY MAP: fails unless the library exports exactly what the map lists.
set -eu

listed=$(mktemp)
trap 'rm -f "$listed"' EXIT
sed -n 's/^ *\([a-z_][a-z0-9_]*\);$/\1/p' "$2" | sort > "$listed"
nm -D --defined-only "$1" | awk '{ print $3 }' | sort | diff "$listed" - ||
    { echo "listed in $2 (<) but not exported, or exported (>) but not listed"; exit 1; }
