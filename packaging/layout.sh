# shellcheck shell=bash
# The folder that an agent unpacks and starts, the same on every system: the programs beside data/ and letters/.
# Sourced by packaging/*/build after tools/setup.sh and tools/desk.sh; wants a build of this machine's own in
# $build, whose tolva-data makes the delivered files.

# lay_package FOLDER: makes it anew, with the empty desk in it.
lay_package() {
    local folder=$1
    rm -rf "$folder" && mkdir -p "$folder/data" "$folder/letters" || fail "$folder could not be made"
    fill_data "$folder/data" own
    cp "$delivery"/letters/* "$folder/letters/" || fail "$folder could not be filled"
}

# Program version as CMakeLists.txt has it.
version() {
    sed -n 's/^project(tolva VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt"
}
