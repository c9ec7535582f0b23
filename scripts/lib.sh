# Shared by the scripts beside it; read with `source`. Everything it says goes to standard error.

say() { echo "== $*" >&2; }

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

sudo=()
[ "$(id -u)" = 0 ] || sudo=(sudo)
as_root() { "${sudo[@]}" "$@"; }

# need_packages NAME... installs the Debian packages among NAME... that are missing.
need_packages() {
    local name missing=()
    for name in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} = 0 ] && return
    say "installing ${missing[*]}"
    apt_install "${missing[@]}" || { apt_get update && apt_install "${missing[@]}"; } \
        || fail "apt-get could not install: ${missing[*]}"
}

apt_install() { apt_get install -y --no-install-recommends "$@"; }

apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq -o DPkg::Lock::Timeout=600 -o Dpkg::Use-Pty=0 "$@" >&2
}

# The folder for what is made once per machine and kept outside the source tree.
cache_dir() {
    local dir="${XDG_CACHE_HOME:-$HOME/.cache}/velm"
    mkdir -p "$dir" && realpath "$dir"
}

# make_once NAME COMMAND... runs COMMAND... with a new folder as its last argument and, when it
# succeeds, renames the folder to NAME. Does nothing if NAME exists. One process at a time; what a
# failed attempt leaves goes with the next.
make_once() {
    local made="$1" new="$1.new" lock
    shift
    [ ! -d "$made" ] || return 0
    exec {lock}>"$made.lock"
    flock "$lock"
    if [ ! -d "$made" ]; then
        [ ! -e "$new" ] || as_root rm -rf --one-file-system "$new"
        mkdir "$new"
        "$@" "$new"
        mv -T "$new" "$made"
    fi
    exec {lock}>&-
}
