#!/bin/sh
# replay_test.sh STORY COMMAND...: the story, and lines that cannot be read among some that can,
# replay as the files beside them say.
set -eu

story=$1
mistakes=$(dirname "$0")/mistakes
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

expect() { # EXPECTED STATUS COMMAND...
    expected=$1
    status=$2
    shift 2
    "$@" > "$work/output" 2>&1 && found=0 || found=$?
    # Compilers differ about the line that a statement of several lines stands in.
    sed -i 's/\[[0-9]*\]- /[L]- /' "$work/output"
    if ! diff "$expected" "$work/output" || [ "$found" != "$status" ]; then
        echo "the output is not as in $expected (<), or $found is not exit status $status"
        exit 1
    fi
}

expect "${story%.txt}.out" 0 "$@" "$story"
# Lines may end as on other systems; an @ stands for a null character.
sed 's/$/\r/' "$mistakes.txt" | tr @ '\000' > "$work/mistakes"
expect "$mistakes.out" 1 "$@" - < "$work/mistakes"
"$@" "$story" > /dev/full 2> /dev/null && { echo "a full disk goes unnoticed"; exit 1; }
"$@" /nonexistent > /dev/null 2>&1 && { echo "a missing file goes unnoticed"; exit 1; }
exit 0
