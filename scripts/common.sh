# shellcheck shell=sh disable=SC2154,SC2086,SC2046 # the caller's variables; lists of words
# Sourced by the other scripts. $root is the source tree, $self the prefix of a script's messages.

say() {
    printf '%s: %s\n' "$self" "$*" >&2
}

# Runs a command with no input, and prints its output only if it fails or warns; otherwise only its
# notes, which are lines that begin with "note: ".
quietly() {
    log=$(mktemp)
    if ! "$@" > "$log" 2>&1 < /dev/null; then
        cat "$log" >&2
        rm -f "$log"
        say "failed: $*"
        exit 1
    fi
    if grep -q 'warning: ' "$log"; then
        cat "$log" >&2
    else
        sed -n "s/^note: /$self: /p" "$log" >&2
    fi
    rm -f "$log"
}

# Prints the comment at the head of the script as its usage, and exits.
usage() {
    sed -n '2,/^[^#]/s/^# //p' "$0" >&2
    exit 2
}

# Installs missing Debian packages; on other systems assumes that the tools exist. "ONE|OTHER" is
# satisfied by either, and installs ONE.
need() {
    command -v dpkg-query > /dev/null || return 0
    missing=
    for package; do
        case $(dpkg-query -W -f='${db:Status-Abbrev}' $(echo "$package" | tr '|' ' ') 2> /dev/null) in
        *[hi]i*) ;; # "hi" is held
        *) missing="$missing ${package%%|*}" ;;
        esac
    done
    [ -n "$missing" ] || return 0

    if [ "$(id -u)" = 0 ]; then
        as_root=env
    elif command -v sudo > /dev/null && sudo -n -v 2> /dev/null; then
        as_root='sudo env'
    else
        say "packages are missing; install them and run the script again:"
        say "    apt-get update && apt-get install -y --no-install-recommends$missing"
        exit 1
    fi
    say "installing$missing"
    quietly $as_root apt-get update
    quietly $as_root DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends $missing
}

# Runs mmdebstrap hooks in sequence on a clean Debian that has the packages and the source tree in
# /source. The output goes to the file $log, and its notes, as those of quietly, also to the user.
in_clean_debian() { # RELEASE CPUS PACKAGES HOOK...
    release=$1
    cpus=$2
    packages=$3
    shift 3
    for hook; do
        set -- "$@" "--customize-hook=$hook"
        shift
    done
    need mmdebstrap
    [ "$(id -u)" = 0 ] || need uidmap # for mmdebstrap without root
    mkdir -p "$root/build"
    source=$(mktemp)
    tar -c -C "$root" --exclude=./build --exclude=./.git -f "$source" .
    log=$root/build/$self-$release.log
    # shellcheck disable=SC2016 # $1 is the hook's: the root folder of that Debian
    {
        mmdebstrap --variant=apt --architectures="$cpus" --include="$packages" \
            --customize-hook='mkdir "$1/source"' \
            --customize-hook="tar-in '$source' /source" \
            "$@" "$release" /dev/null < /dev/null || echo failed
    } 2>&1 | tee "$log" | sed -un "s/^note: /$self: /p" >&2
    rm "$source"
    if [ "$(tail -n 1 "$log")" = failed ]; then
        cat "$log" >&2
        say "failed"
        exit 1
    fi
}

build_packages='g++ cmake ninja-build'
test_packages="$build_packages libgtest-dev"
docs_packages='doxygen python3'
