# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced: a home with sample photos and two stand-in cards, and a machine profile that leads
# the program there.

# make_demo_home <build folder> <demo folder>: what is there already is kept.
make_demo_home() {
    local build demo
    build=$(realpath "$1")
    mkdir -p "$2/home/.config"
    demo=$(realpath "$2")
    echo "Making sample photos (a few seconds the first time)"
    "$build/tools/photos/lumivault-photos" demo "$demo"
    cat > "$demo/machine.ini" << INI
; A file named NotAvailable in cf or sd takes that card out; deleting it puts the card in.
[Mounts]
CF=cf
SD=sd
[Hinge]
Program=$build/tools/chkhinge/chkhinge
[Resources]
Path=$build/resources
INI
}

# enter_demo_home <demo folder>: for programs started from here on.
enter_demo_home() {
    HOME=$(realpath "$1/home")
    LUMIVAULT_MACHINE=$(realpath "$1/machine.ini")
    XDG_CONFIG_HOME=$HOME/.config
    export HOME LUMIVAULT_MACHINE XDG_CONFIG_HOME
    unset XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME
}
