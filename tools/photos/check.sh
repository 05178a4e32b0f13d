#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tests lumivault-photos against an independent reader: check.sh <lumivault-photos>
set -u
photos=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failures=0

# is <what> <wanted> <found>
is() {
    if [ "$2" != "$3" ]; then
        echo "$1: wanted '$2', found '$3'"
        failures=$((failures + 1))
    fi
}

# field <file> <tag>: the tag's bare value, "-" if there is none
field() {
    exiftool -n -f -s3 "-$2" "$folder/$1"
}

one() {
    local file=$1
    shift
    "$photos" one "$folder/$file" --size 64x48 "$@"
    is "exit status for $file" 0 $?
}

one camera.jpg
is "size" "64x48" "$(field camera.jpg ImageWidth)x$(field camera.jpg ImageHeight)"
is "recorded size" "64x48" "$(field camera.jpg ExifImageWidth)x$(field camera.jpg ExifImageHeight)"
is "byte order" "II" "$(field camera.jpg ExifByteOrder)"
is "make" "Helio Optics" "$(field camera.jpg Make)"
is "Exif right behind the start" "ffd8ffe1" "$(head -c 4 "$folder/camera.jpg" | od -An -tx1 | tr -d ' \n')"
exiftool -b -ThumbnailImage "$folder/camera.jpg" > "$folder/thumbnail.jpg"
is "embedded thumbnail" "160x120" "$(field thumbnail.jpg ImageWidth)x$(field thumbnail.jpg ImageHeight)"
is "structure" "" "$(exiftool -validate -warning -error -s3 -q "$folder/camera.jpg" | grep -v '^OK$')"

one other.jpg --traits bigendian,gps,comment --scene sea
is "other byte order" "MM" "$(field other.jpg ExifByteOrder)"
is "south is negative" "-34.3555" "$(field other.jpg GPSLatitude | cut -c1-8)"
is "comment" "Taken on the way home" "$(field other.jpg UserComment)"
is "no embedded thumbnail" "-" "$(field other.jpg ThumbnailLength)"

one progressive.jpg --traits progressive
one gray.jpg --traits gray,jfif
is "progressive" "2" "$(field progressive.jpg EncodingProcess)"
is "baseline" "0" "$(field camera.jpg EncodingProcess)"
is "gray" "1" "$(field gray.jpg ColorComponents)"
is "JFIF segment" "1 1" "$(field gray.jpg JFIFVersion)"
is "no Exif" "-" "$(field progressive.jpg Make)"

one again.jpg
one seed.jpg --seed 2
one cut.jpg --traits exif,thumbnail,cutoff
cmp -s "$folder/camera.jpg" "$folder/again.jpg"
is "same seed, same bytes" 0 $?
cmp -s "$folder/camera.jpg" "$folder/seed.jpg"
is "other seed, other bytes" 1 $?
wholeSize=$(stat -c %s "$folder/camera.jpg")
is "cut off" $((wholeSize * 3 / 5)) "$(stat -c %s "$folder/cut.jpg")"

"$photos" many "$folder/many" --count 30 --size 64x48
is "exit status for many" 0 $?
is "many" 30 "$(find "$folder/many" -name 'IMG_000??.JPG' | wc -l)"
is "each its own time" 30 "$(exiftool -s3 -q -DateTimeOriginal "$folder/many" | sort -u | wc -l)"

for wrong in "--size 0x5" "--size 64" "--count -1" "--traits exif,jpeg" "--scene moon" "--what 1"; do
    # shellcheck disable=SC2086 # option and value are two words
    "$photos" one "$folder/wrong.jpg" $wrong 2> "$folder/usage"
    is "exit status for $wrong" 2 $?
    is "usage for $wrong" 1 "$(grep -c '^usage:' "$folder/usage")"
done
is "nothing written for wrong options" "" "$(find "$folder" -name 'wrong*')"
"$photos" one "$folder/camera.jpg/below.jpg" --size 64x48 2> /dev/null
is "exit status for a folder that can't be made" 1 $?

[ $failures -eq 0 ] && echo "all as wanted"
[ $failures -eq 0 ]
