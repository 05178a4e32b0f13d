# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced: makes a home with sample photos, two stand-in cards and a machine profile that leads
# the program there. With `set -e` the first copy that fails ends the script.

samples=$(realpath "$(dirname "${BASH_SOURCE[0]}")")/photos
# The time in the Exif data of all samples.
sampleTime="2004:07:12 10:07:00"
# When the last photo was taken, in seconds.
shotTime=0

# shots_from <date and time>: the next photos are taken after that, one every 17 minutes.
shots_from() {
    shotTime=$(date -d "$1" +%s)
}

# photo <sample> <file>: copies the sample unless the file exists. The Exif data of the copy and
# the time of the file say when it was taken.
photo() {
    shotTime=$((shotTime + 17 * 60))
    [ -e "$2" ] && return
    mkdir -p "$(dirname "$2")"
    # The copy gets its name when it is complete, since an existing file is not copied again.
    LC_ALL=C sed "s/$sampleTime/$(date -d "@$shotTime" '+%Y:%m:%d %H:%M:%S')/g" \
        "$samples/$1.jpg" > "$2.part"
    touch -d "@$shotTime" "$2.part"
    mv "$2.part" "$2"
}

# noise <bytes> <file>: makes a file that is no photo, unless it exists.
noise() {
    [ -e "$2" ] || tail -c "$1" "$samples/lake.jpg" > "$2"
}

# make_store <folder>
make_store() {
    mkdir -p "$1/Nothing here yet"
    shots_from "2004-07-12 18:00"
    photo evening "$1/Evening.jpg"
    photo firstLight "$1/First light over the hills, seen from the old bridge.jpg"
    photo gray "$1/In black and white.jpg"
    photo panorama "$1/Panorama.jpg"
    photo forest "$1/Upright.JPG"
    photo dusk "$1/Web copy.jpeg"
    photo small "$1/Small.jpg"
    [ -e "$1/Cut off.jpg" ] || head -c 120000 "$samples/panorama.jpg" > "$1/Cut off.jpg"
    [ -e "$1/Shopping list.txt" ] || printf 'Bread\nCheese\nTwo films\n' > "$1/Shopping list.txt"
    noise 9000 "$1/Damaged.jpg"
    make_album "$1/Album"
    make_travels "$1"
}

# make_album <folder>: enough for several pages of the smallest thumbnails
make_album() {
    local names=(evening gray forest coast dusk dunes city small) number
    shots_from "2004-10-02 08:00"
    for number in $(seq 90); do
        photo "${names[number % ${#names[@]}]}" "$1/Picture $(printf %03d "$number").jpg"
    done
}

# make_travels <folder>
make_travels() {
    shots_from "2004-07-13 06:00"
    photo firstLight "$1/Alps 2004/DSC00101.JPG"
    photo lake "$1/Alps 2004/DSC00102.JPG"
    photo evening "$1/Alps 2004/DSC00103.JPG"
    photo gray "$1/Alps 2004/DSC00104.JPG"
    photo summit "$1/Alps 2004/DSC00105.JPG"
    photo forest "$1/Alps 2004/DSC00106.JPG"
    photo panorama "$1/Alps 2004/DSC00107.JPG"
    shots_from "2004-07-14 09:30"
    photo lake "$1/Alps 2004/Second day/DSC00120.JPG"
    photo forest "$1/Alps 2004/Second day/DSC00121.JPG"
    photo summit "$1/Alps 2004/Second day/DSC00122.JPG"
    shots_from "2004-08-20 17:00"
    photo coast "$1/By the sea/Coast.jpg"
    photo dunes "$1/By the sea/Dunes/Path.jpg"
    photo dusk "$1/By the sea/Dusk.jpg"
    shots_from "2004-09-03 22:00"
    photo dusk "$1/City by night/Across the bay.jpg"
    photo city "$1/City by night/Harbour.jpg"
    shots_from "2004-09-18 11:00"
    photo forest "$1/Für Oma/Grüße.jpg"
}

# make_cards <folder>: the cards cf and sd of two cameras
make_cards() {
    mkdir -p "$1/cf/misc" "$1/sd/private"
    shots_from "2005-05-07 08:00"
    photo firstLight "$1/cf/dcim/100helio/img_0001.jpg"
    photo lake "$1/cf/dcim/100helio/img_0002.jpg"
    photo summit "$1/cf/dcim/100helio/img_0003.jpg"
    photo evening "$1/cf/dcim/100helio/img_0005.jpg"
    photo gray "$1/cf/dcim/101helio/img_0101.jpg"
    photo city "$1/cf/dcim/101helio/img_0102.jpg"
    noise 400000 "$1/cf/dcim/100helio/mvi_0004.avi"
    noise 4000 "$1/cf/dcim/100helio/mvi_0004.thm"
    noise 600 "$1/cf/dcim/autprint.mrk"
    shots_from "2005-05-08 14:00"
    photo coast "$1/sd/dcim/nv000001.jpg"
    photo forest "$1/sd/dcim/nv000002.jpg"
    photo dunes "$1/sd/dcim/103norvk/nv000003.jpg"
    photo dusk "$1/sd/dcim/103norvk/nv000004.jpg"
    noise 250000 "$1/sd/dcim/103norvk/nv000005.mov"
}

# make_demo_home <demo folder>: what is there already is kept.
make_demo_home() {
    local demo
    mkdir -p "$1/home/.config"
    demo=$(realpath "$1")
    echo "Copying sample photos"
    make_store "$demo/home/Documents/Photo_Files"
    make_cards "$demo"
    cat > "$demo/machine.ini" << INI
; A file named NotAvailable in cf or sd takes that card out; deleting it puts the card in.
[Mounts]
CF=cf
SD=sd
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
