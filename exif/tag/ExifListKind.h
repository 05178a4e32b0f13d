// SPDX-License-Identifier: MIT
// Which tag list of a document is meant. ExifIfdKind of the walking reader names the same
// directories by other numbers; the two are never mixed.
#pragma once

enum class ExifListKind : int {
    Ifd0 = 0,
    Exif = 1,
    Interoperability = 2,
    Gps = 3,
    Ifd1 = 4,
};
