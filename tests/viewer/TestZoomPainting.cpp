// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/MemoryFaults.h"
#include "viewer/zoomPainting.h"
#include "viewer/zoomPlacement.h"

#include <QTest>

#include <cstring>
#include <vector>

using lumi::ZoomPlacement;
using lumi::ZoomTarget;

Q_DECLARE_METATYPE(lumi::ZoomPlacement)

namespace {

constexpr quint32 kUntouched = 0x12345678;

/// A pixel of the photo. All pixels of a row and of a column differ.
quint32 photoPixel(int x, int y, int depth)
{
    return depth == 16 ? quint32((x * 251 + y * 7 + 1) & 0xFFFF)
                       : 0xFF000000U | quint32(x << 12) | quint32(y);
}

quint32 marginPixel(int depth)
{
    return depth == 16 ? quint32(lumi::kMargin16) : lumi::kMargin32;
}

void put(std::vector<uchar> &bytes, std::size_t index, quint32 value, int depth)
{
    const auto size = static_cast<std::size_t>(depth / 8);
    const auto narrow = static_cast<quint16>(value);
    std::memcpy(bytes.data() + index * size,
                depth == 16 ? static_cast<const void *>(&narrow) : &value, size);
}

quint32 get(const uchar *bytes, int depth)
{
    quint16 narrow = 0;
    quint32 wide = 0;
    if (depth == 16) {
        std::memcpy(&narrow, bytes, sizeof narrow);
        return narrow;
    }
    std::memcpy(&wide, bytes, sizeof wide);
    return wide;
}

/// A photo turned like the decoder's rasters, in memory of exactly its size.
std::vector<uchar> rasterOf(QSize size, int depth)
{
    const auto count = static_cast<std::size_t>(size.width()) * std::size_t(size.height());
    std::vector<uchar> bytes(count * static_cast<std::size_t>(depth / 8));
    for (int x = 0; x < size.width(); ++x) {
        for (int y = 0; y < size.height(); ++y) {
            const auto index = static_cast<std::size_t>(x) * std::size_t(size.height())
                + std::size_t(size.height() - 1 - y);
            put(bytes, index, photoPixel(x, y, depth), depth);
        }
    }
    return bytes;
}

/// The turned memory of a screen and the area of a widget in it.
struct Screen
{
    Screen(QSize screenSize, const QRect &widgetRect, int bits)
        : size(screenSize)
        , widget(widgetRect)
        , depth(bits)
        , lineStep((screenSize.height() * (bits / 8) + 3) / 4 * 4)
        , memory(static_cast<std::size_t>(lineStep) * std::size_t(screenSize.width()))
    {
        for (std::size_t i = 0; i < memory.size() / std::size_t(depth / 8); ++i) {
            put(memory, i, kUntouched, depth);
        }
    }

    [[nodiscard]] QRect turned(const QRect &rect) const
    {
        return {size.height() - rect.y() - rect.height(), rect.x(), rect.height(), rect.width()};
    }

    [[nodiscard]] ZoomTarget target() { return target(turned(widget)); }

    [[nodiscard]] ZoomTarget target(const QRegion &region)
    {
        return {memory.data(), lineStep, turned(widget), region};
    }

    /// The screen as the user sees it.
    [[nodiscard]] quint32 at(int x, int y) const
    {
        return get(memory.data() + std::ptrdiff_t(x) * lineStep
                       + std::ptrdiff_t(size.height() - 1 - y) * (depth / 8),
                   depth);
    }

    [[nodiscard]] quint32 untouched() const
    {
        return depth == 16 ? kUntouched & 0xFFFFU : kUntouched;
    }

    QSize size;
    QRect widget;
    int depth;
    int lineStep;
    std::vector<uchar> memory;
};

/// The expected pixel at a place of the widget.
quint32 expectedAt(const ZoomPlacement &across, const ZoomPlacement &down, QPoint at, int percent,
                   int depth)
{
    const int i = at.x() - across.margin;
    const int j = at.y() - down.margin;
    if (i < 0 || i >= across.shown || j < 0 || j >= down.shown) {
        return marginPixel(depth);
    }
    return photoPixel(across.origin + i * 100 / percent, down.origin + j * 100 / percent, depth);
}

/// The first wrong pixel of the screen as text; empty if all are right.
QString fault(const Screen &screen, QSize photo, QPoint origin, int percent)
{
    const ZoomPlacement across
        = lumi::zoomPlacement(photo.width(), percent, origin.x(), screen.widget.width());
    const ZoomPlacement down
        = lumi::zoomPlacement(photo.height(), percent, origin.y(), screen.widget.height());
    for (int y = 0; y < screen.size.height(); ++y) {
        for (int x = 0; x < screen.size.width(); ++x) {
            const QPoint at(x, y);
            const quint32 wanted = screen.widget.contains(at)
                ? expectedAt(across, down, at - screen.widget.topLeft(), percent, screen.depth)
                : screen.untouched();
            if (screen.at(x, y) != wanted) {
                return QStringLiteral("(%1, %2): %3 instead of %4")
                    .arg(QString::number(x), QString::number(y),
                         QString::number(screen.at(x, y), 16), QString::number(wanted, 16));
            }
        }
    }
    return {};
}

} // namespace

class TestZoomPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placement_data();
    void placement();
    void noPixelPastTheRaster();
    void everyPixel_data();
    void everyPixel();
    void theOriginDrawn_data();
    void theOriginDrawn();
    void onlyInTheRegion_data();
    void onlyInTheRegion();
    void nothingToDraw_data();
    void nothingToDraw();
    void withoutMemoryNothingIsDrawn();
};

void TestZoomPainting::placement_data()
{
    lumi::test::columns<int, int, int, int, ZoomPlacement>();
    QTest::newRow("smaller: in the middle") << 100 << 200 << 0 << 640 << ZoomPlacement{0, 220, 200};
    QTest::newRow("smaller: no origin") << 100 << 200 << 30 << 640 << ZoomPlacement{0, 220, 200};
    QTest::newRow("an odd difference") << 101 << 100 << 0 << 200 << ZoomPlacement{0, 49, 101};
    QTest::newRow("just as large") << 320 << 200 << 5 << 640 << ZoomPlacement{0, 0, 640};
    QTest::newRow("larger: from the start") << 800 << 100 << 0 << 640 << ZoomPlacement{0, 0, 640};
    QTest::newRow("larger: from the middle")
        << 800 << 100 << 70 << 640 << ZoomPlacement{70, 0, 640};
    QTest::newRow("larger: up to the end")
        << 800 << 100 << 999 << 640 << ZoomPlacement{160, 0, 640};
    QTest::newRow("larger: not before the start")
        << 800 << 100 << -9 << 640 << ZoomPlacement{0, 0, 640};
    QTest::newRow("the end at 400") << 800 << 400 << 9999 << 640 << ZoomPlacement{640, 0, 640};
    QTest::newRow("the end at 30") << 3000 << 30 << 9999 << 640 << ZoomPlacement{869, 0, 640};
    QTest::newRow("a line stays a line") << 1 << 10 << 0 << 480 << ZoomPlacement{0, 239, 1};
    QTest::newRow("room for one pixel") << 500 << 100 << 600 << 1 << ZoomPlacement{499, 0, 1};
}

void TestZoomPainting::placement()
{
    const auto [length, percent, origin, room, expected]
        = lumi::test::row<int, int, int, int, ZoomPlacement>();
    QCOMPARE(lumi::zoomPlacement(length, percent, origin, room), expected);
}

void TestZoomPainting::noPixelPastTheRaster()
{
    for (const int length : {1, 2, 3, 7, 99, 100, 101, 333, 1000, 65500}) {
        for (const int percent : {1, 3, 10, 30, 33, 40, 99, 100, 101, 150, 333, 1000, 2000}) {
            for (const int room : {1, 2, 3, 99, 100, 480, 640}) {
                const ZoomPlacement end = lumi::zoomPlacement(length, percent, length, room);
                QVERIFY(end.origin >= 0 && end.margin >= 0 && end.shown > 0);
                QVERIFY(end.margin + end.shown <= room);
                const int last = lumi::zoomedPixel(end.origin, end.shown - 1, percent);
                QVERIFY(last < length);
                // A picture larger than its area can be moved until its last pixel is visible.
                QVERIFY(end.shown < room || end.origin == 0 || last == length - 1);
            }
        }
    }
}

void TestZoomPainting::everyPixel_data()
{
    lumi::test::columns<int, QSize, int, QPoint>();
    const QPoint kEnd(9999, 9999);
    for (const int depth : {16, 32}) {
        const auto row = [depth](const char *name, QSize photo, int percent, QPoint origin) {
            QTest::addRow("%s, %d bits", name, depth) << depth << photo << percent << origin;
        };
        row("at 100, smaller", QSize(41, 30), 100, {});
        row("at 100, larger", QSize(141, 130), 100, {});
        row("at 100, up to the end", QSize(141, 130), 100, kEnd);
        row("at 400, from the start", QSize(41, 30), 400, {});
        row("at 400, from the middle", QSize(41, 30), 400, {7, 5});
        row("at 400, up to the end", QSize(41, 30), 400, kEnd);
        row("at 33, smaller", QSize(141, 130), 33, {});
        row("at 73, larger", QSize(141, 130), 73, {11, 3});
        row("at 73, up to the end", QSize(141, 130), 73, kEnd);
        row("wide: margins above and below", QSize(300, 20), 100, {50, 50});
        row("high: margins left and right", QSize(20, 300), 100, {50, 50});
        row("one pixel at 1000", QSize(1, 1), 1000, {});
        row("a line at 10", QSize(900, 1), 10, {});
    }
}

void TestZoomPainting::everyPixel()
{
    const auto [depth, photo, percent, origin] = lumi::test::row<int, QSize, int, QPoint>();
    const std::vector<uchar> raster = rasterOf(photo, depth);
    // With an odd height the step of 16-bit lines differs from their length.
    Screen screen(QSize(120, 95), QRect(13, 21, 90, 61), depth);
    lumi::paintZoomed({raster.data(), photo, origin, percent, depth}, screen.target());
    const QString wrong = fault(screen, photo, origin, percent);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestZoomPainting::theOriginDrawn_data()
{
    lumi::test::columns<QPoint, int, QPoint>();
    QTest::newRow("inside") << QPoint(10, 20) << 100 << QPoint(10, 20);
    QTest::newRow("before the start") << QPoint(-10, -20) << 100 << QPoint(0, 0);
    QTest::newRow("past the end") << QPoint(500, 500) << 100 << QPoint(110, 139);
    QTest::newRow("larger on one axis only") << QPoint(10, 20) << 40 << QPoint(0, 20);
    QTest::newRow("all on show") << QPoint(10, 20) << 20 << QPoint(0, 0);
    QTest::newRow("no percent") << QPoint(-10, 500) << 0 << QPoint(-10, 500);
}

void TestZoomPainting::theOriginDrawn()
{
    const auto [wanted, percent, drawn] = lumi::test::row<QPoint, int, QPoint>();
    const std::vector<uchar> raster = rasterOf({200, 200}, 32);
    const QRect area(0, 0, 61, 90); // turned: 90 wide, 61 high
    QCOMPARE(lumi::zoomOrigin({raster.data(), {200, 200}, wanted, percent, 32}, area), drawn);
}

void TestZoomPainting::onlyInTheRegion_data()
{
    QTest::addColumn<QRegion>("hole");
    QTest::newRow("a box over the middle") << QRegion(40, 30, 30, 20);
    QTest::newRow("a box over a corner") << QRegion(0, 0, 30, 40);
    QTest::newRow("two boxes") << QRegion(20, 30, 10, 10).united(QRect(50, 35, 20, 30));
    QTest::newRow("a box over everything") << QRegion(0, 0, 120, 95);
}

void TestZoomPainting::onlyInTheRegion()
{
    QFETCH(QRegion, hole);
    const QSize photo(141, 130);
    const std::vector<uchar> raster = rasterOf(photo, 32);
    const QRect widget(13, 21, 90, 61);
    Screen whole(QSize(120, 95), widget, 32);
    lumi::paintZoomed({raster.data(), photo, {}, 73, 32}, whole.target());
    Screen covered(QSize(120, 95), widget, 32);
    QRegion region;
    for (const QRect &rect : QRegion(widget).subtracted(hole)) {
        region += covered.turned(rect);
    }
    lumi::paintZoomed({raster.data(), photo, {}, 73, 32}, covered.target(region));
    for (int y = 0; y < 95; ++y) {
        for (int x = 0; x < 120; ++x) {
            const quint32 wanted
                = hole.contains(QPoint(x, y)) ? covered.untouched() : whole.at(x, y);
            QCOMPARE(covered.at(x, y), wanted);
        }
    }
}

void TestZoomPainting::nothingToDraw_data()
{
    lumi::test::columns<QSize, int, QRect>();
    const QRect whole(0, 0, 95, 120);
    QTest::newRow("no raster") << QSize() << 100 << whole;
    QTest::newRow("a raster of no width") << QSize(0, 10) << 100 << whole;
    QTest::newRow("no percent") << QSize(10, 10) << 0 << whole;
    QTest::newRow("a percent below nothing") << QSize(10, 10) << -10 << whole;
    QTest::newRow("no place") << QSize(10, 10) << 100 << QRect();
}

void TestZoomPainting::nothingToDraw()
{
    const auto [photo, percent, area] = lumi::test::row<QSize, int, QRect>();
    const std::vector<uchar> raster = rasterOf({10, 10}, 32);
    Screen screen(QSize(120, 95), QRect(0, 0, 120, 95), 32);
    const ZoomTarget target{screen.memory.data(), screen.lineStep, area, QRect(0, 0, 95, 120)};
    lumi::paintZoomed({photo.isValid() ? raster.data() : nullptr, photo, {}, percent, 32}, target);
    for (int y = 0; y < 95; ++y) {
        for (int x = 0; x < 120; ++x) {
            QCOMPARE(screen.at(x, y), screen.untouched());
        }
    }
    // The same call without missing parts does draw.
    lumi::paintZoomed({raster.data(), {10, 10}, {}, 100, 32}, screen.target());
    QVERIFY(screen.at(0, 0) != screen.untouched());
}

void TestZoomPainting::withoutMemoryNothingIsDrawn()
{
    const std::vector<uchar> raster = rasterOf({10, 10}, 32);
    Screen screen(QSize(120, 95), QRect(0, 0, 120, 95), 32);
    const ZoomTarget target = screen.target();
    {
        const lumi::test::NoArrays none;
        lumi::paintZoomed({raster.data(), {10, 10}, {}, 100, 32}, target);
    }
    QCOMPARE(screen.at(0, 0), screen.untouched());
    QCOMPARE(screen.at(60, 47), screen.untouched());
    lumi::paintZoomed({raster.data(), {10, 10}, {}, 100, 32}, target);
    QVERIFY(screen.at(60, 47) != screen.untouched());
}

LUMI_TEST(TestZoomPainting)
#include "TestZoomPainting.moc"
