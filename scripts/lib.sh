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

# make_debian_root ARCHITECTURE FOLDER OPTION... makes a small Debian system of this machine's release in a folder
# that exists. The options go to debootstrap.
make_debian_root() {
    local arch="$1" root="$2" release mirror
    shift 2
    need_packages debootstrap util-linux
    release="$(. /etc/os-release && echo "${VERSION_CODENAME:-}")"
    mirror="$(mirror_of "$release")"
    [ -n "$mirror" ] || { apt_get update && mirror="$(mirror_of "$release")"; }
    [ -n "$mirror" ] || fail "apt-get knows no package source of Debian '$release'"

    chmod 755 "$root"
    # In a mount namespace of its own, so that no mount outlives an attempt that fails.
    as_root unshare --mount debootstrap --arch="$arch" --variant=minbase "$@" "$release" "$root" "$mirror" \
        >"$root.log" 2>&1 || { tail -20 "$root.log" >&2; fail "debootstrap failed; the log is $root.log"; }
}

# The address this machine's own apt has release $1 from.
mirror_of() {
    apt-get indextargets --format '$(RELEASE) $(REPO_URI)' 'Created-By: Packages' \
        | awk -v release="$1" '$1 == release && !found { print $2; found = 1 }'
}
