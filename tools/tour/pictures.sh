# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by the tour: tests the full view and the slideshow in all situations, in a separate home
# with three photos and a battery.

showHome=$out/show
showStore=$showHome/home/Documents/Photo_Files

# make_show_home <demo folder>: copies its photos from there
make_show_home() {
    local from=$1/home/Documents/Photo_Files name
    rm -rf "$showHome"
    mkdir -p "$showStore" "$showHome/home/.config" "$showHome/power/BAT0"
    cp "$1/machine.ini" "$showHome/machine.ini"
    printf '[Power]\nDir=power\n' >> "$showHome/machine.ini"
    for name in type=Battery present=1 status=Discharging capacity=80; do
        echo "${name#*=}" > "$showHome/power/BAT0/${name%%=*}"
    done
    cp "$from/Evening.jpg" "$showStore/a.jpg"
    cp "$from/Small.jpg" "$showStore/b.jpg"
    cp "$from/Panorama.jpg" "$showStore/c.jpg"
}

# remember <name> <region> keeps that part of the screen. looksLike <name> <region>: whether it is
# the same again. A thumbnail from the cache differs a little from a new one.
remember() {
    convert "$out/last.png[$2]" "$out/kept-$1.png"
}

looksLike() {
    local different
    different=$(convert "$out/last.png[$2]" "$out/kept-$1.png" -compose difference -composite \
        -colorspace gray -threshold 10% -format '%[fx:int(mean*w*h+0.5)]' info:)
    [ "$different" -lt 500 ]
}

# otherProgram: shows the window of another program in front
otherProgram() {
    display -size 240x120 -immutable xc:orange 2> /dev/null &
    otherPid=$!
}

# Ends that program and taps on what was behind it.
otherProgramEnds() {
    kill "$otherPid"
    wait "$otherPid" 2> /dev/null
    sleep 0.5
    click "$(cell 2 0)"
    sleep 0.5
    click "$(cell 0 0)"
}

# playsToItsEnd <seconds> <key>...: sets the options by these keys and plays. Succeeds if the
# browser is back after that time.
playsToItsEnd() {
    local seconds=$1
    shift
    slideshowOptions "$@" Return
    sleep 1
    settle
    click "$slideButton"
    wait_for_change || return 1
    sleep "$seconds"
    settle
    looksLike column "$column"
}

fullView() {
    step "a photo of three" changes click "$(cell 0 0)"
    remember browser "$picture"
    remember column "$column"
    step "on the full screen" "changes@$picture" click "$(cell 0 0)"
    remember first "$picture"
    step "its next one" "changes@$picture" key End
    step "and the last" "changes@$picture" key End
    step "behind the last comes the first" "changes@$picture" key End
    holds "it is the first" looksLike first "$picture"
    step "the window's own button closes the full view" changes click "$closeButton"
    holds "the browser is back" looksLike browser "$picture"
    step "the full view again" "changes@$picture" click "$(cell 0 0)"
    step "another program that comes to the front ends it" changes otherProgram
    step "which goes" changes otherProgramEnds
    holds "the browser can be used" looksLike browser "$picture"
}

slideshowToItsEnd() {
    holds "once in order, to the end" playsToItsEnd 10 Up Tab Home Tab Home Tab Home
    holds "once at random, to the end" playsToItsEnd 10 Tab End
    holds "twice in order, to the end" playsToItsEnd 16 Tab Home Tab Tab Home Down
}

slideshowThatEndsEarly() {
    slideshowOptions Down Return
    sleep 1
    settle
    step "by hand" changes click "$slideButton"
    local patience=40 # the program checks the battery every 30 s
    step "an empty battery ends the show" changes drain 10
    holds "and leads back to the browser" looksLike column "$column"
    step "by hand again" changes click "$slideButton"
    step "another program that comes to the front ends the show" changes otherProgram
    step "which goes as well" changes otherProgramEnds
}

drain() {
    echo "$1" > "$showHome/power/BAT0/capacity"
}

# onlyIsLeft <photo>
onlyIsLeft() {
    [ "$(cd "$showStore" && echo *)" = "$1" ]
}

photosThatGo() {
    step "by hand, from the first" changes click "$slideButton"
    rm "$showStore/b.jpg"
    step "a photo that has gone is passed over" changes key Right
    step "Delete in the menu asks" changes fromSlideMenu 5
    step "Yes deletes the one on the screen" changes key alt+y
    holds "and no other" onlyIsLeft a.jpg
    step "Escape ends the show" changes key Escape
    head -c 100 "$showStore/a.jpg" > "$showStore/d.jpg"
    step "the house" changes click "$topButton"
    step "the folder anew" changes click "$viewButton"
    step "a broken photo" changes click "$(cell 1 0)"
    step "tells so over the full view" changes click "$(cell 1 0)"
    step "and goes back to the browser" changes key Return
}

# picturesTour <program> <demo folder>
picturesTour() {
    local closeButton="632 5" column=70x380+0+$formTop
    make_show_home "$2"
    start_program "$1" "$showHome"
    step "a home with three photos" changes wait_for_window
    step "its photos" changes click "$viewButton"
    fullView
    slideshowToItsEnd
    slideshowThatEndsEarly
    photosThatGo
    end_program
    holds "the program ended with status 0 here too" test "$programStatus" -eq 0
}
