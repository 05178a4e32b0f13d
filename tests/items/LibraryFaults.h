// SPDX-License-Identifier: MIT
// Makes library calls fail. The test program has its own versions of them, which call the library
// until they are told to fail.
#pragma once

#include <cstddef>

namespace lumi::test {

class LibraryFaults
{
public:
    LibraryFaults() = default;
    /// Everything works again.
    ~LibraryFaults();
    LibraryFaults(const LibraryFaults &) = delete;
    LibraryFaults &operator=(const LibraryFaults &) = delete;

    /// libjpeg reports an error instead of decoding this line and all later ones.
    void failJpegFromLine(int line);
    void failClosedir();
    /// libjpeg reports an error instead of making a decompressor.
    void failJpegCreate();
};

/// How many libjpeg decompressors exist now.
[[nodiscard]] int liveDecompressors();

/// How many photos were opened for decoding since the start of the program. Images that the toolkit
/// decodes (stored and embedded thumbnails) are not counted.
[[nodiscard]] int photosOpened();

/// How often libjpeg was told that a decode is over, since the start of the program.
[[nodiscard]] int finishedDecodes();

/// The distance in bytes between the first and the last target of lines in the latest decode.
[[nodiscard]] std::ptrdiff_t lineReach();

} // namespace lumi::test
