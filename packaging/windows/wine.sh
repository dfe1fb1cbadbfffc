# shellcheck shell=bash
# How Windows programs are run here. Sourced by the scripts of packaging/windows after tools/setup.sh.

cross=$root/build-windows

install_wine() {
    install_packages wine wine64
    export WINEPREFIX=$cross/wine WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    # Where the tests' libraries lie, as Windows spells it; the package has its own beside the program.
    local mingw
    mingw=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
    export WINEPATH="Z:${mingw//\//\\};Z:\\usr\\x86_64-w64-mingw32\\lib;Z:${cross//\//\\}\\qt\\inst\\bin"
    if [ ! -d "$WINEPREFIX" ]; then
        say "Making a Windows for the tests"
        wineboot --init >/dev/null 2>&1 || fail "Wine could not be set up"
        wineserver --wait
    fi
}

# Debian's package has the one name or the other.
in_wine() {
    if command -v wine64 >/dev/null; then wine64 "$@"; else wine "$@"; fi
}
