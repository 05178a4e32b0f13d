// SPDX-License-Identifier: MIT
// Feeds libjpeg from a file through a window of 8132 bytes. At the end of the file, or if it could
// not be opened, an end-of-image marker is added: a truncated photo decodes to a short picture
// instead of an error.
#pragma once

#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

inline constexpr std::size_t kJpegWindowBytes = 8132;

// NOLINTNEXTLINE(readability-identifier-naming): part of the interface
struct my_jpeg_source_mgr
{
    jpeg_source_mgr manager; ///< must stay first: libjpeg knows only this
    int file;                ///< descriptor, lent; -1 reads as an empty file
    JOCTET buffer[kJpegWindowBytes];
};

namespace lumi {

/// Makes source the source of cinfo. Both must stay where they are.
void attachJpegSource(jpeg_decompress_struct *cinfo, my_jpeg_source_mgr *source, int file);

} // namespace lumi
