// SPDX-License-Identifier: MIT
#include "items/rasterMemory.h"

#include <new>

#include <sys/mman.h>

namespace {

constexpr std::size_t kPageBytes = 4096;

} // namespace

std::unique_ptr<uchar[]> lumi::newRaster(std::size_t bytes)
{
    std::unique_ptr<uchar[]> raster(new (std::nothrow) uchar[bytes]);
    void *start = raster.get();
    std::size_t space = bytes;
    if (raster && std::align(kPageBytes, kPageBytes, start, space) != nullptr) {
        // Only advice: if it is refused, ordinary pages are used.
        (void)::madvise(start, space, MADV_HUGEPAGE);
    }
    return raster;
}
