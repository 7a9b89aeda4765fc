# shellcheck shell=sh disable=SC2154,SC2086 # the variables of the caller; lists of words
# Sourced by the other scripts. $root is the tree, $self the name that a script speaks under.

say() {
    printf '%s: %s\n' "$self" "$*" >&2
}

# Runs a command and shows what it printed only if it fails or warns. It never reads the script's input.
quietly() {
    log=$(mktemp)
    if ! "$@" > "$log" 2>&1 < /dev/null; then
        cat "$log" >&2
        rm -f "$log"
        say "failed: $*"
        exit 1
    fi
    ! grep -q 'warning: ' "$log" || cat "$log" >&2
    rm -f "$log"
}

# Prints the usage that a script opens with, and ends it.
usage() {
    sed -n '2,/^[^#]/s/^# //p' "$0" >&2
    exit 2
}

# Sees to it that Debian's packages are there; elsewhere their tools are taken to be. "ONE|OTHER" is
# ONE, unless OTHER is there.
need() {
    command -v dpkg-query > /dev/null || return 0
    missing=
    for package; do
        case $(dpkg-query -W -f='${db:Status-Abbrev}' $(echo "$package" | tr '|' ' ') 2> /dev/null) in
        *ii*) ;;
        *) missing="$missing ${package%%|*}" ;;
        esac
    done
    [ -n "$missing" ] || return 0

    if [ "$(id -u)" = 0 ]; then
        as_root=env
    elif command -v sudo > /dev/null && sudo -v < /dev/null 2> /dev/null; then
        as_root='sudo env'
    else
        say "these packages are missing; install them, then run this again:"
        say "    apt-get install --no-install-recommends$missing"
        exit 1
    fi
    say "installing$missing"
    quietly $as_root apt-get update
    quietly $as_root DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends $missing
}

build_packages='g++ cmake ninja-build'
test_packages="$build_packages libgtest-dev"
docs_packages='doxygen python3'
