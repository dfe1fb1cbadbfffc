# shellcheck shell=bash
# Shared by ./tolva, ./test and .ci/run: what the machine needs, and how the tree is built.
# Sourced by bash; every function ends the script with a clear line when it cannot do its work.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build

# Debian's names of what each command needs.
build_packages=(cmake ninja-build g++ qt6-base-dev fonts-liberation)
test_packages=(libgtest-dev xvfb openbox x11-utils mdbtools poppler-utils)
format_packages=(clang-format)

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# Runs a command as the administrator.
as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "packages are missing and can only be installed as root or with sudo: $*"
    fi
}

# Installs those of the named Debian packages that are missing. Asks nobody outside when none is.
install_packages() {
    command -v dpkg-query >/dev/null || return 0 # another system: the build names what it lacks
    local installed missing=() package
    installed=" $(dpkg-query -W -f '${db:Status-Status}:${Package} ' "$@" 2>/dev/null)"
    for package in "$@"; do
        [[ $installed == *" installed:$package "* ]] || missing+=("$package")
    done
    [ ${#missing[@]} = 0 ] && return 0

    say "Installing: ${missing[*]}"
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0)
    as_root "${apt[@]}" update || fail "the list of Debian packages could not be fetched"
    as_root "${apt[@]}" install --no-install-recommends "${missing[@]}" ||
        fail "these packages could not be installed: ${missing[*]}"
}

# Node.js may come from elsewhere than Debian, with an npm of its own, so its commands are what counts.
install_node() {
    command -v node >/dev/null && command -v npm >/dev/null || install_packages nodejs npm
}

# Whether a build folder was prepared for this very tree (a folder that was moved or copied here was not).
belongs_here() {
    grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$1/CMakeCache.txt"
}

# configure FOLDER OPTION...: prepares a build folder of this tree.
configure() {
    local folder=$1
    shift
    local options=(-S "$root" -B "$folder" -G Ninja "$@")
    if [ -f "$folder/CMakeCache.txt" ] && ! belongs_here "$folder"; then
        options+=(--fresh)
    fi
    if command -v ccache >/dev/null; then
        options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    mkdir -p "$folder" || fail "$folder could not be made"
    cmake "${options[@]}" >"$folder/configure.log" 2>&1 || {
        cat "$folder/configure.log" >&2
        fail "the build could not be prepared"
    }
}

# compile FOLDER [TARGET...]
compile() {
    local folder=$1
    shift
    # Lets a compiler cache serve several clones of the tree.
    export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1
    cmake --build "$folder" ${1:+--target "$@"} || fail "the build failed"
}
