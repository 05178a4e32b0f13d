// SPDX-License-Identifier: MIT
// The tag lists of a document. ExifIfdKind of the walking reader has other numbers for the same
// directories.
#pragma once

enum class ExifListKind : int {
    Ifd0 = 0,
    Exif = 1,
    Interoperability = 2,
    Gps = 3,
    Ifd1 = 4,
};
