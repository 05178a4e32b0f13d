# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by the tour: a virtual screen of a handheld's size, the program on it, and steps that wait
# until the picture has changed and is stable. Needs $out, the folder for screenshots.

steps=0
failures=0
screenPids=()
programPid=
programStatus=
# The part of the screen that the current step compares, as WxH+X+Y; empty for all of it.
region=
# Longest wait for a change; a slow machine may need seconds to paint a page of thumbnails.
patience=15

start_screen() {
    mkdir -p "$out/runtime"
    chmod 700 "$out/runtime"
    trap stop_screen EXIT
    exec 7> "$out/display"
    Xvfb -displayfd 7 -screen 0 640x480x24 -nolisten tcp > "$out/screen.log" 2>&1 &
    screenPids+=($!)
    local tries
    for tries in $(seq 100); do
        [ -s "$out/display" ] && break
        sleep 0.1
    done
    exec 7>&-
    if [ ! -s "$out/display" ]; then
        echo "No virtual screen after $tries tries; see $out/screen.log" >&2
        return 1
    fi
    DISPLAY=:$(cat "$out/display")
    export DISPLAY
    HOME=$out openbox --config-file "$PWD/tools/tour/rc.xml" > "$out/windows.log" 2>&1 &
    screenPids+=($!)
    sleep 1
    settle
}

stop_screen() {
    trap - EXIT
    if alive; then
        kill -KILL "$programPid"
    fi
    local pid
    for pid in "${screenPids[@]}"; do
        kill "$pid" 2> /dev/null
        wait "$pid" 2> /dev/null
    done
    screenPids=()
}

# start_program <program> <demo folder>
start_program() {
    (
        enter_demo_home "$2"
        export XDG_RUNTIME_DIR=$out/runtime DBUS_SESSION_BUS_ADDRESS=disabled:
        export DBUS_SYSTEM_BUS_ADDRESS=disabled: LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb
        unset QT_SCALE_FACTOR QT_STYLE_OVERRIDE WAYLAND_DISPLAY
        exec "$1"
    ) >> "$out/program.log" 2>&1 &
    programPid=$!
}

alive() {
    [ -n "$programPid" ] && kill -0 "$programPid" 2> /dev/null
}

# end_program: closes the window as a user does and stores the exit status in programStatus.
end_program() {
    key alt+F4
    local tries
    for tries in $(seq $((patience * 10))); do
        alive || break
        sleep 0.1
    done
    if alive; then
        echo "The program didn't end within $((tries / 10)) s."
        kill_program
        programStatus=none
        return
    fi
    wait "$programPid"
    programStatus=$?
    programPid=
    settle
}

kill_program() {
    if alive; then
        kill -KILL "$programPid"
        wait "$programPid" 2> /dev/null
        programPid=
        settle
    fi
}

# look: takes a picture of the screen
look() {
    import -window root -silent "$out/now.png"
}

# sign <picture>: a short text that is the same for the same pixels of the region
sign() {
    identify -format '%#' "$1${region:+[$region]}"
}

# rest: waits until three screenshots in a row are the same; the last one is $out/now.png
rest() {
    local same=0 before now end=$((SECONDS + patience))
    look
    before=$(sign "$out/now.png")
    while [ $same -lt 2 ] && [ $SECONDS -lt $end ]; do
        sleep 0.15
        look
        now=$(sign "$out/now.png")
        if [ "$now" = "$before" ]; then
            same=$((same + 1))
        else
            same=0
        fi
        before=$now
    done
}

# settle: waits for a stable screen, with which the next step compares
settle() {
    rest
    cp "$out/now.png" "$out/last.png"
}

wait_for_change() {
    local before end=$((SECONDS + patience))
    before=$(sign "$out/last.png")
    while [ $SECONDS -lt $end ] && alive; do
        look
        [ "$(sign "$out/now.png")" != "$before" ] && return 0
        sleep 0.1
    done
    return 1
}

# step <what it shows> changes|stays[@region] <action> [<argument>...]
step() {
    local what=$1 expected=${2%%@*} verdict=passed name
    case $2 in
        *@*) region=${2#*@} ;;
    esac
    shift 2
    steps=$((steps + 1))
    "$@"
    if [ "$expected" = changes ] && ! wait_for_change; then
        verdict="FAILED: the screen stayed as it was"
    fi
    rest
    case $expected-$(sign "$out/now.png") in
        changes-"$(sign "$out/last.png")") verdict="FAILED: the screen looks as before" ;;
        changes-* | stays-"$(sign "$out/last.png")") ;;
        *) verdict="FAILED: the screen changed" ;;
    esac
    region=
    alive || verdict="FAILED: the program is gone"
    name=$(printf '%02d-%s.png' $steps "$(tr -cs 'A-Za-z0-9' '-' <<< "$what" | sed 's/-*$//')")
    cp "$out/now.png" "$out/last.png"
    mv "$out/now.png" "$out/$name"
    report "$what" "$verdict" "$name"
}

# holds <what> <command>...: a step that checks files instead of the screen
holds() {
    local what=$1
    shift
    steps=$((steps + 1))
    if "$@"; then
        report "$what" passed ""
    else
        report "$what" "FAILED" ""
    fi
}

report() {
    [ "$2" = passed ] || failures=$((failures + 1))
    printf '%2d  %-52s %s%s\n' $steps "$1" "$2" "${3:+  ($3)}"
}

# The actions.

wait_for_window() {
    :
}

# click "<x> <y>"
click() {
    # shellcheck disable=SC2086 # two numbers
    xdotool mousemove $1 click 1
}

# middleClick "<x> <y>"
middleClick() {
    # shellcheck disable=SC2086 # two numbers
    xdotool mousemove $1 click 2
}

# fill "<x> <y>" <text>: replaces the text of the field at that place by typing
fill() {
    click "$1"
    sleep 0.2
    key ctrl+a Delete
    xdotool type --delay 30 "$2"
}

# drag "<x> <y>" "<x> <y>": from one place to the other with the button down
drag() {
    # shellcheck disable=SC2086 # two numbers each
    xdotool mousemove $1 mousedown 1 mousemove $2 mouseup 1
}

# key <name>...
key() {
    local name
    for name in "$@"; do
        xdotool key "$name"
        sleep 0.2
    done
}

# menu "<x> <y>" <number>: opens the menu there and chooses the entry with that number
menu() {
    local entry region=
    click "$1"
    wait_for_change
    rest
    for entry in $(seq "$2"); do
        xdotool key Down
        sleep 0.1
    done
    xdotool key Return
}

scroll_down() {
    xdotool mousemove 400 250 click 5
}

scroll_up() {
    xdotool mousemove 400 250 click 4
}
