# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2154
# Sourced by .ci/check-package: a fresh tree into which the package is installed and in which the
# installed program runs. Uses $scratch, $source, $package and the function complain.

tree=
user=

# as_root <command>...: for what takes root's rights or seems to
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        fakeroot "$@"
    fi
}

# in_tree <dpkg option>...: the packages that this one depends on are those of this machine.
in_tree() {
    as_root dpkg --root="$tree" --force-depends --force-script-chrootless --force-not-root "$@" \
        >> "$scratch/dpkg.log" 2>&1
}

# list_tree: every file except dpkg's own and the user's. Empty folders belong to no package.
list_tree() {
    (cd "$tree" && find . -path ./var/lib/dpkg -prune -o -path ./home -prune -o ! -type d -print | sort)
}

# make_tree: with the folders that every system has
make_tree() {
    tree=$scratch/tree
    user=$tree/home/user
    mkdir -p "$tree/var/lib/dpkg/"{info,updates} "$user/.config/lumivault" "$tree/etc/systemd/system" \
        "$tree/usr/bin"
    ln -s usr/bin "$tree/bin"
    cp /bin/sh "$tree/bin/sh" # systemd-analyze looks for the interpreter of each program
    : > "$tree/var/lib/dpkg/status"
    list_tree > "$scratch/before"
}

install_package() {
    in_tree --install "$package" || { cat "$scratch/dpkg.log"; return 1; }
}

# make_driver: the plugin of the tests that acts as the user of the real program
make_driver() {
    local build=build/driver
    (
        cmake --preset release -B $build -D BUILD_TESTING=ON \
            && nice cmake --build $build --target test_app_driver
    ) > "$scratch/driver.log" 2>&1 || complain "No driver: $(tail -n 30 "$scratch/driver.log")"
    plugins=$PWD/$build/tests/app/plugins
}

# import_a_card: starts the program by the command of its menu entry. The driver imports a card.
import_a_card() {
    local command pid name plugins sums
    make_driver
    mkdir -p "$user/sd/dcim" "$user/cf" "$scratch/runtime"
    chmod 700 "$scratch/runtime"
    cp tools/tour/photos/{coast,dunes}.jpg "$user/sd/dcim"
    printf '[Mounts]\nCF=%s\nSD=%s\n' "$user/cf" "$user/sd" > "$user/.config/lumivault/machine.ini"
    command=$(sed -n 's/^Exec=//p' "$tree/usr/share/applications/lumivault.desktop")
    env -u LUMIVAULT_MACHINE -u XDG_DATA_HOME -u XDG_CACHE_HOME -u XDG_STATE_HOME HOME="$user" \
        XDG_CONFIG_HOME="$user/.config" XDG_CONFIG_DIRS="$tree/etc/xdg" \
        XDG_RUNTIME_DIR="$scratch/runtime" QT_QPA_PLATFORM=offscreen \
        DBUS_SESSION_BUS_ADDRESS=disabled: DBUS_SYSTEM_BUS_ADDRESS=disabled: \
        QT_PLUGIN_PATH="$plugins" QT_QPA_GENERIC_PLUGINS=lumidriver LUMI_DRIVER_END=import \
        "$tree/usr/bin/$command" > "$scratch/windows" 2> "$scratch/messages" &
    pid=$!
    for _ in $(seq 300); do
        [ "$(imported | wc -l)" -eq 2 ] && break
        kill -0 "$pid" 2> /dev/null || break
        sleep 0.1
    done
    sleep 0.5
    kill "$pid" 2> /dev/null
    wait "$pid" || complain "The program $command did not run until its normal end."
    grep "No pictures" "$scratch/messages" && complain "The installed program misses its pictures."
    sums=$(imported | xargs -d '\n' -r sha256sum)
    for name in coast dunes; do
        grep -q "^$(sha256sum < "tools/tour/photos/$name.jpg" | cut -c1-64)" <<< "$sums" \
            || complain "$name.jpg was not imported: $(cat "$scratch/windows" "$scratch/messages")"
    done
}

imported() {
    find "$user/Documents/Photo_Files" -name .photo_swp -prune -o -type f -print 2> /dev/null
}

# switch_cards_on: by the documented command. The rules look for the link that it makes.
switch_cards_on() {
    local link marker helper=$tree/usr/libexec/lumivault/place-markers
    link=$(sed -n 's/^TEST!="\([^"]*\)".*/\1/p' "$tree"/usr/lib/udev/rules.d/*)
    [ -L "$tree$link" ] && complain "Cards are switched on by the installation."
    silent "Switching cards on" as_root systemctl --quiet --root="$tree" enable lumivault-markers.service
    [ -L "$tree$link" ] || complain "Switched on, but there is no $link."
    "$helper" "$scratch/slot"
    marker=$(ls "$scratch/slot")
    grep -q "\"/$marker\"" platform/cards/CardSlots.cpp || complain "The program ignores the marker $marker."
    "$helper" --remove "$scratch/slot"
    [ -e "$scratch/slot" ] && complain "The marker stays."
}

# remove_package: only the user's own files stay.
remove_package() {
    local files
    files=$(find "$user" -type f -exec sha256sum {} + | sort)
    in_tree --purge lumivault || { cat "$scratch/dpkg.log"; complain "The package can't be removed."; }
    list_tree > "$scratch/after"
    diff "$scratch/before" "$scratch/after" || complain "The removed package leaves files."
    [ "$files" = "$(find "$user" -type f -exec sha256sum {} + | sort)" ] \
        || complain "Removing the package changes the user's files."
}
