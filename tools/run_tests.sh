# shellcheck shell=bash
# How tests are run. Sourced by ./test and .ci/run, after tools/setup.sh.

# The independent reader that tests hold our files against. Tests that want it skip when it is not there.
install_interop() {
    local folder=$root/tests/interop
    [ -f "$folder/package-lock.json" ] || return 0
    [ "$folder/node_modules/.package-lock.json" -nt "$folder/package-lock.json" ] && return 0
    if ! (cd "$folder" && npm ci --ignore-scripts --no-audit --no-fund --loglevel=error); then
        say "The independent readers of tests/interop could not be installed; tests that need them will skip."
    fi
}

# A screen and a window manager of the tests' own, so that nothing opens on the desk of whoever runs them and
# no machine needs a screen. Both go when the script ends.
start_display() {
    scratch=$(mktemp -d) || fail "no scratch folder could be made"
    trap 'stop_display' EXIT

    mkfifo "$scratch/number"
    Xvfb -displayfd 3 -screen 0 1600x1200x24 -nolisten tcp 3>"$scratch/number" >"$scratch/xvfb.log" 2>&1 &
    x_server=$!
    local number=
    read -r -t 60 number <>"$scratch/number"
    [ -n "$number" ] || { cat "$scratch/xvfb.log" >&2 && fail "the virtual display did not start"; }
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY XAUTHORITY

    # Settings of whoever runs the tests must neither steer them nor be changed by them.
    mkdir -m 700 "$scratch/config" "$scratch/runtime"
    export XDG_CONFIG_HOME=$scratch/config XDG_RUNTIME_DIR=$scratch/runtime QT_QPA_PLATFORM=xcb

    openbox >"$scratch/openbox.log" 2>&1 &
    window_manager=$!
    local tries=0
    until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; do
        [ $((tries += 1)) -le 100 ] || { cat "$scratch/openbox.log" >&2 && fail "the window manager did not start"; }
        sleep 0.1
    done
}

stop_display() {
    kill "${window_manager-}" "${x_server-}" 2>/dev/null
    wait 2>/dev/null
    rm -rf "$scratch"
}

# run_tests BUILD [NAME...]: every test, or those whose names match; then what was skipped, and why. Fails when
# a test does, and when there was none to run.
run_tests() {
    local folder=$1 status=0 names
    shift
    names=$(IFS='|' && printf '%s' "$*")
    ctest --test-dir "$folder" -j2 --output-on-failure --no-tests=error ${names:+-R "$names"} || status=1
    list_skips "$folder/Testing/Temporary/LastTest.log"
    return $status
}

# The skipped tests of a log by their reasons.
list_skips() {
    awk '
        { sub(/\r$/, "") }
        /^\[ RUN      \] /     { reason = ""; open = 0; next }
        /: Skipped$/           { open = 1; next }
        /^\[  SKIPPED \] .*ms\)$/ {
            name = $4
            if (reason == "") reason = "no reason given"
            if (!(reason in names)) order[++reasons] = reason
            names[reason] = names[reason] "\n    " name
            skipped++
            open = 0
            next
        }
        open && NF             { reason = reason == "" ? $0 : reason " " $0 }
        END {
            if (!skipped) exit
            printf "\nSkipped: %d\n", skipped
            for (i = 1; i <= reasons; i++) printf "  %s:%s\n", order[i], names[order[i]]
        }' "$1"
}
