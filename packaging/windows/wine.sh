# shellcheck shell=bash
# How Windows programs are run here. Sourced by the scripts of packaging/windows after cross.sh.

install_wine() {
    install_packages wine wine64
    export WINEPREFIX=$cross/wine WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    # Where the tests' libraries lie, as Windows spells it; the package has its own beside the program.
    local mingw
    mingw=$(dirname "$($triple-g++-posix -print-file-name=libstdc++-6.dll)")
    export WINEPATH="Z:${mingw//\//\\};Z:\\usr\\$triple\\lib;Z:${cross//\//\\}\\qt\\inst\\bin"
    if [ ! -f "$WINEPREFIX/with-desktop" ]; then
        say "Making a Windows for the tests"
        rm -rf "$WINEPREFIX"
        wineboot --init >/dev/null 2>&1 || fail "Wine could not be set up"
        # Windows' own fonts for windows are not free; these are about as wide.
        local font
        for font in Tahoma "Segoe UI" "MS Shell Dlg" "MS Shell Dlg 2"; do
            in_wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d 'Liberation Sans' /f
        done >/dev/null 2>&1
        # A desktop of Wine's own, so that windows come to the front as Windows brings them, whatever manages the
        # windows around it.
        {
            in_wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f
            in_wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1600x1200 /f
        } >/dev/null 2>&1
        wineserver --wait
        touch "$WINEPREFIX/with-desktop"
    fi
}

# Debian's package has the one name or the other.
in_wine() {
    if command -v wine64 >/dev/null; then wine64 "$@"; else wine "$@"; fi
}
