# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by .ci/check-i386 and .ci/check-bare after packages.sh: a small Debian system in a folder.

tree=

# enter_tree <folder> <architecture>: makes the system if it is missing, which needs the network. Needs
# root. Sets $tree to the folder; its /proc and /dev are mounted until the script ends.
enter_tree() {
    if [ "$(id -u)" -ne 0 ]; then
        echo "A Debian system in a folder needs root." >&2
        exit 1
    fi
    mkdir -p "$1"
    tree=$(realpath "$1")
    if [ ! -e "$tree/etc/debian_version" ]; then
        install_missing debootstrap
        debootstrap --arch="$2" --variant=minbase bookworm "$tree" || exit
    fi
    mountpoint -q "$tree/proc" || mount -t proc proc "$tree/proc"
    mountpoint -q "$tree/dev" || mount --bind /dev "$tree/dev"
    trap leave_tree EXIT
}

leave_tree() {
    umount "$tree/dev" "$tree/proc"
}
