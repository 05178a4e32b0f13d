#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tests chkhinge with a stand-in for the kernel linked in: check.sh <program>
set -u
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
touch "$folder/event0" "$folder/mouse0"
failures=0

# expect <status> <what the device answers> <input folder>
expect() {
    FAKE_SWITCH=$2 "$program" "$3"
    local status=$?
    if [ $status -ne "$1" ]; then
        echo "$2 in $3: wanted status $1, found $status"
        failures=$((failures + 1))
    fi
}

program=$1
expect 0 none "$folder"
expect 0 lid "$folder"
expect 0 laptop "$folder"
expect 1 tablet "$folder"
expect 0 tablet "$folder/missing"
rm "$folder/event0"
expect 0 tablet "$folder"
[ $failures -eq 0 ] && echo "all as wanted"
[ $failures -eq 0 ]
