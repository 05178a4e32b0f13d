// SPDX-License-Identifier: MIT
#include "viewer/zoomPainting.h"

#include "viewer/zoomPlacement.h"
#include "viewer/zoomSteps.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>

namespace {

using lumi::ZoomPlacement;
using lumi::ZoomSource;
using lumi::ZoomTarget;

struct Placement
{
    ZoomPlacement across; ///< along the screen's rows: the lines of the memory
    ZoomPlacement down;   ///< along the screen's columns: the pixels of a line, from the last
};

Placement placement(const ZoomSource &source, const QRect &area)
{
    return {
        lumi::zoomPlacement(source.size.width(), source.percent, source.origin.x(), area.height()),
        lumi::zoomPlacement(source.size.height(), source.percent, source.origin.y(), area.width())};
}

bool isDrawable(const ZoomSource &source, const QRect &area)
{
    return source.raster != nullptr && !source.size.isEmpty() && source.percent > 0
        && !area.isEmpty();
}

/// Line pixel i becomes row pixel places[i]. The compiler must assume that row and line overlap.
/// Loading several pixels before storing any lets the processor load them in parallel.
template <typename Pixel> void gather(const Pixel *row, const int *places, int count, Pixel *line)
{
    constexpr int kAtOnce = 8;
    int i = 0;
    for (; i + kAtOnce <= count; i += kAtOnce) {
        const std::array<Pixel, kAtOnce> taken
            = {row[places[i]],     row[places[i + 1]], row[places[i + 2]], row[places[i + 3]],
               row[places[i + 4]], row[places[i + 5]], row[places[i + 6]], row[places[i + 7]]};
        std::copy(taken.begin(), taken.end(), line + i);
    }
    for (; i < count; ++i) {
        line[i] = row[places[i]];
    }
}

/// Draws the lines of the memory one after the other.
template <typename Pixel> class Painter
{
public:
    Painter(const ZoomSource &source, const ZoomTarget &target, Pixel margin);

    [[nodiscard]] bool hasMemory() const { return m_line && m_gray && m_places; }

    void paint();

private:
    void findPlaces();
    [[nodiscard]] Pixel *lineAt(int index) const;
    void takeRow(int row, Pixel *line) const;
    void write(const Pixel *line, int index) const;

    const ZoomSource &m_source;
    const ZoomTarget &m_target;
    Placement m_placement;
    int m_room;    ///< pixels of a line
    bool m_isOpen; ///< every pixel of the area may be written
    std::unique_ptr<Pixel[]> m_line;
    std::unique_ptr<Pixel[]> m_gray;
    std::unique_ptr<int[]> m_places; ///< index in a raster row of each visible pixel
};

template <typename Pixel>
Painter<Pixel>::Painter(const ZoomSource &source, const ZoomTarget &target, Pixel margin)
    : m_source(source)
    , m_target(target)
    , m_placement(placement(source, target.area))
    , m_room(target.area.width())
    , m_isOpen(target.region.rectCount() == 1 && target.region.boundingRect().contains(target.area))
    , m_line(new (std::nothrow) Pixel[static_cast<std::size_t>(m_room)])
    , m_gray(new (std::nothrow) Pixel[static_cast<std::size_t>(m_room)])
    , m_places(new (std::nothrow) int[static_cast<std::size_t>(m_placement.down.shown)])
{
    if (hasMemory()) {
        std::fill_n(m_gray.get(), m_room, margin);
        findPlaces();
    }
}

template <typename Pixel> void Painter<Pixel>::findPlaces()
{
    const ZoomPlacement &down = m_placement.down;
    for (int i = 0; i < down.shown; ++i) {
        const int fromTop = lumi::zoomedPixel(down.origin, down.shown - 1 - i, m_source.percent);
        m_places[static_cast<std::size_t>(i)] = m_source.size.height() - 1 - fromTop;
    }
}

template <typename Pixel> Pixel *Painter<Pixel>::lineAt(int index) const
{
    const QPoint start = m_target.area.topLeft() + QPoint(0, index);
    uchar *bits = m_target.bits + std::ptrdiff_t(start.y()) * m_target.lineStep;
    return reinterpret_cast<Pixel *>(bits) + start.x();
}

/// Fills a whole line from a raster row, with the margins on both sides.
template <typename Pixel> void Painter<Pixel>::takeRow(int row, Pixel *line) const
{
    const ZoomPlacement &down = m_placement.down;
    const auto *pixels = reinterpret_cast<const Pixel *>(m_source.raster)
        + std::ptrdiff_t(row) * m_source.size.height();
    Pixel *picture = std::copy_n(m_gray.get(), m_room - down.margin - down.shown, line);
    std::copy_n(m_gray.get(), down.margin, picture + down.shown);
    if (m_source.percent == lumi::kFullSize) {
        // At full size the pixels of a row are adjacent.
        std::copy_n(pixels + m_places[0], down.shown, picture);
    } else {
        gather(pixels, m_places.get(), down.shown, picture);
    }
}

template <typename Pixel> void Painter<Pixel>::write(const Pixel *line, int index) const
{
    const QRect whole(m_target.area.x(), m_target.area.y() + index, m_room, 1);
    for (const QRect &rect : m_target.region) {
        const QRect part = rect & whole;
        if (!part.isEmpty()) {
            const int start = part.x() - whole.x();
            std::copy_n(line + start, part.width(), lineAt(index) + start);
        }
    }
}

template <typename Pixel> void Painter<Pixel>::paint()
{
    const ZoomPlacement &across = m_placement.across;
    const Pixel *taken = nullptr;
    int takenRow = -1;
    for (int i = 0; i < m_target.area.height(); ++i) {
        const int index = i - across.margin;
        if (index < 0 || index >= across.shown) {
            write(m_gray.get(), i);
            continue;
        }
        const int row = lumi::zoomedPixel(across.origin, index, m_source.percent);
        if (row == takenRow) {
            write(taken, i);
            continue;
        }
        // If no window covers the area, the row is written straight into the memory.
        Pixel *line = m_isOpen ? lineAt(i) : m_line.get();
        takeRow(row, line);
        taken = line;
        takenRow = row;
        if (!m_isOpen) {
            write(line, i);
        }
    }
}

template <typename Pixel>
void paintPixels(const ZoomSource &source, const ZoomTarget &target, Pixel margin)
{
    Painter<Pixel> painter(source, target, margin);
    if (painter.hasMemory()) {
        painter.paint();
    }
}

} // namespace

QPoint lumi::zoomOrigin(const ZoomSource &source, const QRect &area)
{
    if (!isDrawable(source, area)) {
        return source.origin;
    }
    const Placement placed = placement(source, area);
    return {placed.across.origin, placed.down.origin};
}

void lumi::paintZoomed(const ZoomSource &source, const ZoomTarget &target)
{
    if (target.bits == nullptr || target.region.isEmpty() || !isDrawable(source, target.area)) {
        return;
    }
    constexpr int kNarrowDepth = 16;
    if (source.depth == kNarrowDepth) {
        paintPixels(source, target, kMargin16);
    } else {
        paintPixels(source, target, kMargin32);
    }
}
