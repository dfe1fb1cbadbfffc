# shellcheck shell=bash
# How a program folder is laid out: the program, data/ and letters/. Sourced by ./tolva and by the tests, after
# tools/setup.sh; wants build/tolva, build/tolva-data and (for the sample) build/tolva-sample.

delivery=$root/delivery

# The entry of a folder by its name in any letter case; nothing when there is none. A data folder that was
# copied over from another machine may be spelled otherwise.
entry_named() {
    find "$1" -mindepth 1 -maxdepth 1 -iname "$2" -print -quit
}

# lay_desk FOLDER own|sample: lays out what is missing and refreshes the program. A part is made under another
# name and renamed when it is whole, so a run that was cut short leaves nothing that looks finished, and a
# part that is there is never written to.
lay_desk() {
    local desk=$1 kind=$2
    mkdir -p "$desk" || fail "$desk could not be made"

    if [ -z "$(entry_named "$desk" data)" ]; then
        say "Laying out ${desk#"$root"/}/data"
        rm -rf "$desk/data.unfinished"
        mkdir "$desk/data.unfinished" || fail "$desk cannot be written to"
        fill_data "$desk/data.unfinished" "$kind"
        mv "$desk/data.unfinished" "$desk/data" || fail "$desk/data could not be made"
    fi
    if [ -z "$(entry_named "$desk" letters)" ]; then
        rm -rf "$desk/letters.unfinished"
        mkdir "$desk/letters.unfinished" && cp "$delivery"/letters/* "$desk/letters.unfinished/" &&
            mv "$desk/letters.unfinished" "$desk/letters" || fail "$desk/letters could not be made"
    fi

    # A running program's file cannot be written to, but another can take its name.
    if ! cmp -s "$build/tolva" "$desk/tolva"; then
        cp "$build/tolva" "$desk/tolva.unfinished" && mv "$desk/tolva.unfinished" "$desk/tolva" ||
            fail "the program could not be copied to $desk"
    fi
}

# fill_data FOLDER own|sample: the seven files and the lists.
fill_data() {
    local folder=$1 kind=$2 schema name rows
    cp "$delivery"/data/* "$folder/" || fail "$folder could not be filled"
    for schema in "$delivery"/schemas/*.schema; do
        name=$(basename "$schema" .schema)
        rows=$delivery/rows/$name.tsv
        "$build/tolva-data" make "$folder/$name.mdb" "$schema" || fail "$name.mdb could not be made"
        if [ -f "$rows" ]; then
            "$build/tolva-data" load "$folder/$name.mdb" "$(table_of "$schema")" <"$rows" >/dev/null ||
                fail "$name.mdb could not be filled"
        fi
    done
    if [ "$kind" = sample ]; then
        "$build/tolva-sample" "$folder" || fail "the made-up customers could not be made"
    fi
}

# The one table that a delivered schema holds.
table_of() {
    local word name
    while read -r word name; do
        if [ "$word" = table ]; then
            name=${name#[}
            say "${name%]}"
            return
        fi
    done <"$1"
}
