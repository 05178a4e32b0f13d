# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034
# Sourced by run, test and .ci/run: the Debian and Ubuntu packages that each of them needs, and a
# function that installs missing ones.

# For building and running the program.
runPackages=(cmake g++ ninja-build qt6-base-dev libx11-dev libxcb1-dev libjpeg-dev librsvg2-bin pngquant fonts-dejavu-core)
# For the tour through the program without a screen.
tourPackages=(xvfb openbox xdotool imagemagick)
# Building and running the tests.
testPackages=("${runPackages[@]}" "${tourPackages[@]}" git dbus libimage-exiftool-perl exiv2)
# A Wayland compositor that needs no screen.
waylandPackages=(weston qt6-wayland imagemagick)
# Building and running the measurements.
benchPackages=("${runPackages[@]}" libexif-dev)
# Building and checking the Debian package.
packagePackages=("${runPackages[@]}" appstream build-essential debhelper desktop-file-utils dpkg-dev fakeroot file git lintian man-db python3 systemd)
# The checks that run at night.
nightlyPackages=(clang llvm libclang-rt-dev debootstrap dosfstools fusefat "${packagePackages[@]}")
# The checks of form.
checkPackages=(clang-format clang-tidy codespell shellcheck desktop-file-utils)

# install_missing <package>...: uses the network only if a package is missing.
install_missing() {
    local package
    local missing=()
    if ! command -v dpkg-query > /dev/null; then
        echo "No dpkg here: I take it that these packages, or your system's twins, are there: $*"
        return 0
    fi
    for package in "$@"; do
        if ! dpkg-query -W -f '${Status}' "$package" 2> /dev/null | grep -q ' installed$'; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Missing packages: ${missing[*]}"
    local asRoot=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo > /dev/null; then
            echo "Please install them as root: apt-get install ${missing[*]}" >&2
            return 1
        fi
        echo "Installing them needs root's rights: sudo may ask for your password."
        asRoot=(sudo)
    fi
    "${asRoot[@]}" apt-get update -q \
        && "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# use_ccache: compiles through ccache where it is installed.
use_ccache() {
    if [ -z "${LUMI_COMPILER_LAUNCHER+set}" ] && command -v ccache > /dev/null; then
        export LUMI_COMPILER_LAUNCHER=ccache
        export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
        # Settings that ccache needs for precompiled headers.
        export CCACHE_SLOPPINESS=pch_defines,time_macros
    fi
    export LUMI_COMPILER_LAUNCHER=${LUMI_COMPILER_LAUNCHER:-}
}
