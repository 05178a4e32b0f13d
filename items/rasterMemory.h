// SPDX-License-Identifier: MIT
// The memory of a screen raster. A raster is large, is filled before its first line is decoded, and
// is written column by column. With ordinary pages of 4 KB, page faults and address look-ups take a
// third of the decoding time.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <memory>

namespace lumi {

/// Uninitialised bytes, on large pages if the system has them. Null without memory.
[[nodiscard]] std::unique_ptr<uchar[]> newRaster(std::size_t bytes);

} // namespace lumi
