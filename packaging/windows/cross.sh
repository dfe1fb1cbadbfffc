# shellcheck shell=bash
# How the programs for Windows are built here. Sourced by the scripts of packaging/windows and by .ci/run after
# tools/setup.sh.

cross=$root/build-windows
triple=x86_64-w64-mingw32
windows_qt=$cross/qt/inst
windows_qt_archive=${TOLVA_WINDOWS_QT_ARCHIVE-$root/../shared/windows/qt6-mingw64.tar.xz}

windows_qt_is_unpacked() {
    [ -f "$windows_qt/bin/Qt6Widgets.dll" ]
}

# Whether there is a Qt for Windows without building one.
windows_qt_is_at_hand() {
    windows_qt_is_unpacked || [ -f "$windows_qt_archive" ]
}

# prepare_cross ON|OFF: everything up to the compiler's own work, with the windows or without. The windows want a
# Qt, which is built where there is none.
prepare_cross() {
    local desktop=$1
    install_packages "${build_packages[@]}" mingw-w64 libgtest-dev
    mkdir -p "$cross/qt" || fail "$cross could not be made"
    if [ "$desktop" = ON ] && ! windows_qt_is_unpacked; then
        if [ -f "$windows_qt_archive" ]; then
            say "Unpacking Qt for Windows from $(basename "$windows_qt_archive")"
            tar -xJf "$windows_qt_archive" -C "$cross/qt" || fail "$windows_qt_archive could not be unpacked"
        else
            "$root/packaging/windows/build_qt" "$windows_qt" || fail "Qt for Windows could not be built"
        fi
    fi

    say "Building the tools of this machine"
    if ! belongs_here "$build" || [ ! -f "$build/build.ninja" ]; then
        configure "$build" -DCMAKE_BUILD_TYPE=Release -DTOLVA_DESKTOP=ON -DTOLVA_TESTS=OFF
    fi
    compile "$build" tolva-data tolva-icon

    say "Building for Windows"
    configure "$cross" -DCMAKE_BUILD_TYPE=Release -DTOLVA_DESKTOP="$desktop" -DTOLVA_TESTS=ON \
        -DCMAKE_TOOLCHAIN_FILE="$root/packaging/windows/toolchain.cmake" \
        -DTOLVA_WINDOWS_QT="$windows_qt" -DTOLVA_HOST_BUILD="$build"
}
