#!/bin/sh
# command_test.sh STORY COMMAND...: the story, a file with mistakes in it, and requests given as
# arguments are answered as the files beside them say.
set -eu

story=$1
here=$(dirname "$0")
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

each_line() { # FILE COMMAND...
    file=$1
    shift
    while read -r line; do
        echo "\$ kriolilglu $line"
        # shellcheck disable=SC2086 # the words of a request
        "$@" $line && answered=0 || answered=$?
        echo "exit status $answered"
    done < "$file"
}

expect "${story%.txt}.out" 0 "$@" "$story"
# Lines may end as on other systems; an @ stands for a null character.
sed 's/$/\r/' "$here/mistakes.txt" | tr @ '\000' > "$work/mistakes"
expect "$here/mistakes.out" 2 "$@" - < "$work/mistakes"
expect "$here/arguments.out" 0 each_line "$here/arguments.txt" "$@"
# The completion asks the command, in any case of the letters.
# shellcheck disable=SC2016 # the variables of the other shell
completed=$(bash -c '
    command=("$@")
    kriolilglu() { "${command[@]}" "$@"; }
    . "$0"
    for word in cp ky_port_row_vlan_ports; do
        COMP_WORDS=(kriolilglu port "$word") COMP_CWORD=2
        _kriolilglu
        echo "${COMPREPLY[@]}"
    done' "$here/../../tools/kriolilglu.bash" "$@")
[ "$completed" = "CPU
KY_PORT_ROW_VLAN_PORTS_SET" ] || { echo "completed: $completed"; exit 1; }
echo 'check swid 9' | "$@" - > /dev/null || { echo "what the library refuses fails a file"; exit 1; }
"$@" "$story" > /dev/full 2> /dev/null && { echo "a full disk goes unnoticed"; exit 1; }
# Colours are for terminals.
if ! script -qec true /dev/null > /dev/null 2>&1; then
    echo "skipped: colours, because script makes no terminal here"
    exit 0
fi
coloured() {
    script -qec "$* check swid 9" /dev/null | grep -c "$(printf '\033')"
}
[ "$(coloured "$@")" = 2 ] || { echo "a terminal shows no colours"; exit 1; }
[ "$(NO_COLOR=1 coloured "$@")" = 0 ] || { echo "NO_COLOR is ignored"; exit 1; }
