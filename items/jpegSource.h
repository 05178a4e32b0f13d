// SPDX-License-Identifier: MIT
// Feeds libjpeg from a file through a window of 8132 bytes. A file that ends early, or that
// could not be opened, ends with a made-up end-of-image marker: a truncated photo comes out as
// a short picture, not as an error.
#pragma once

#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

inline constexpr std::size_t kJpegWindowBytes = 8132;

// NOLINTNEXTLINE(readability-identifier-naming): part of the interface
struct my_jpeg_source_mgr
{
    jpeg_source_mgr manager; ///< must stay first: libjpeg knows only this
    FILE *file;              ///< lent; null reads as an empty file
    JOCTET buffer[kJpegWindowBytes];
};

namespace lumi {

/// Makes source the source of cinfo. Both must stay where they are.
void attachJpegSource(jpeg_decompress_struct *cinfo, my_jpeg_source_mgr *source, FILE *file);

} // namespace lumi
