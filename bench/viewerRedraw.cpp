// SPDX-License-Identifier: MIT
#include "bench/jobs.h"
#include "items/rasterMemory.h"
#include "viewer/zoomPainting.h"

#include <QSize>

#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr QSize kScreen(640, 480);
/// Eight megapixels: the largest raster there is, far larger than any cache.
constexpr QSize kPhoto(3264, 2448);
constexpr int kRounds = 51;
/// One alone would be too short for the clock.
constexpr int kRedraws = 4;

volatile uchar lookedAt = 0;

std::size_t pixels(QSize size)
{
    return static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height());
}

/// At this percent of a photo in the turned memory of a screen, from the middle of the photo.
void redraw(const uchar *raster, std::vector<uchar> *screen, int percent, int depth)
{
    const QRect area(0, 0, kScreen.height(), kScreen.width());
    const QPoint middle(kPhoto.width() / 2, kPhoto.height() / 2);
    for (int i = 0; i < kRedraws; ++i) {
        lumi::paintZoomed({raster, kPhoto, middle, percent, depth},
                          {screen->data(), kScreen.height() * (depth / 8), area, area});
    }
}

/// Copies as many pixels as the redraws draw. Each copy reads other pixels, as a redraw does.
void copyPixels(const uchar *raster, std::vector<uchar> *screen)
{
    for (std::size_t i = 0; i < kRedraws; ++i) {
        std::memcpy(screen->data(), raster + i * screen->size(), screen->size());
        // Otherwise the compiler could remove all copies but the last.
        lookedAt = (*screen)[i];
    }
}

lumi::bench::Row redrawRow(const uchar *raster, int percent, int depth)
{
    std::vector<uchar> screen(pixels(kScreen) * static_cast<std::size_t>(depth / 8));
    return lumi::bench::compare(
        {"one redraw of the viewer at " + std::to_string(percent) + " percent, "
             + std::to_string(depth) + " bits",
         "memcpy of as many pixels of the photo", 8, kRounds},
        [raster, &screen, percent, depth] {
            redraw(raster, &screen, percent, depth);
        },
        [raster, &screen] {
            copyPixels(raster, &screen);
        });
}

} // namespace

std::vector<lumi::bench::Row> lumi::bench::viewerRedrawRows(const QString & /*folder*/)
{
    std::vector<Row> rows;
    for (const int depth : {16, 32}) {
        const auto bytes = static_cast<std::size_t>(depth / 8);
        const std::size_t size = pixels(kPhoto) * bytes;
        const std::unique_ptr<uchar[]> raster = newRaster(size);
        if (!raster) {
            return {};
        }
        std::memset(raster.get(), 1, size);
        for (const int percent : {20, 50, 100, 150, 400}) {
            rows.push_back(redrawRow(raster.get(), percent, depth));
        }
    }
    return rows;
}
