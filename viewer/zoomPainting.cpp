// SPDX-License-Identifier: MIT
#include "viewer/zoomPainting.h"

#include "viewer/zoomPlacement.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
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

/// What is drawn into one line of the memory after another.
template <typename Pixel> class Painter
{
public:
    Painter(const ZoomSource &source, const ZoomTarget &target, Pixel margin);

    [[nodiscard]] bool hasMemory() const { return m_line && m_gray && m_places; }

    void paint();

private:
    void findPlaces();
    void takeRow(int row);
    void write(const Pixel *line, int index);

    const ZoomSource &m_source;
    const ZoomTarget &m_target;
    Placement m_placement;
    int m_room; ///< pixels of a line
    std::unique_ptr<Pixel[]> m_line;
    std::unique_ptr<Pixel[]> m_gray;
    std::unique_ptr<int[]> m_places; ///< in a raster row, of each pixel of the picture
};

template <typename Pixel>
Painter<Pixel>::Painter(const ZoomSource &source, const ZoomTarget &target, Pixel margin)
    : m_source(source)
    , m_target(target)
    , m_placement(placement(source, target.area))
    , m_room(target.area.width())
    , m_line(new (std::nothrow) Pixel[static_cast<std::size_t>(m_room)])
    , m_gray(new (std::nothrow) Pixel[static_cast<std::size_t>(m_room)])
    , m_places(new (std::nothrow) int[static_cast<std::size_t>(m_placement.down.shown)])
{
    if (hasMemory()) {
        std::fill_n(m_line.get(), m_room, margin);
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

template <typename Pixel> void Painter<Pixel>::takeRow(int row)
{
    const ZoomPlacement &down = m_placement.down;
    const auto *pixels = reinterpret_cast<const Pixel *>(m_source.raster)
        + std::ptrdiff_t(row) * m_source.size.height();
    const int *places = m_places.get();
    Pixel *line = m_line.get() + (m_room - down.margin - down.shown);
    for (int i = 0; i < down.shown; ++i) {
        line[i] = pixels[places[i]];
    }
}

template <typename Pixel> void Painter<Pixel>::write(const Pixel *line, int index)
{
    const QRect whole(m_target.area.x(), m_target.area.y() + index, m_room, 1);
    uchar *bits = m_target.bits + std::ptrdiff_t(whole.y()) * m_target.lineStep;
    for (const QRect &rect : m_target.region) {
        const QRect part = rect & whole;
        if (!part.isEmpty()) {
            std::memcpy(bits + std::ptrdiff_t(part.x()) * std::ptrdiff_t(sizeof(Pixel)),
                        line + (part.x() - whole.x()),
                        static_cast<std::size_t>(part.width()) * sizeof(Pixel));
        }
    }
}

template <typename Pixel> void Painter<Pixel>::paint()
{
    const ZoomPlacement &across = m_placement.across;
    int taken = -1;
    for (int i = 0; i < m_target.area.height(); ++i) {
        const int index = i - across.margin;
        if (index < 0 || index >= across.shown) {
            write(m_gray.get(), i);
            continue;
        }
        const int row = lumi::zoomedPixel(across.origin, index, m_source.percent);
        if (row != taken) {
            takeRow(row);
            taken = row;
        }
        write(m_line.get(), i);
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
