// SPDX-License-Identifier: MIT
// The memory of a screen raster. A raster is large, is touched all over before its first line
// is decoded, and is written down its columns: on ordinary pages that costs a fault for each
// 4 KB and more address look-ups than the processor remembers, a third of the decoding time.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <memory>

namespace lumi {

/// Uninitialised bytes, on large pages where the system grants them; null without memory.
[[nodiscard]] std::unique_ptr<uchar[]> newRaster(std::size_t bytes);

} // namespace lumi
