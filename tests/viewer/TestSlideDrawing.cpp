// SPDX-License-Identifier: MIT
// Placement and pixels of the slideshow in plain memory.
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "viewer/slideDrawing.h"
#include "viewer/slidePlacement.h"
#include "viewer/slideSign.h"

#include <QTest>

#include <cstring>
#include <functional>
#include <vector>

using lumi::placeSlide;
using lumi::SlidePlacement;
using lumi::SlideSign;
using lumi::SlideSpan;

namespace {

constexpr quint32 kStale = 0x5A5A5A5A;
constexpr quint32 kBlack32 = 0xFF000000;
/// Bytes behind each row that must not change.
constexpr int kRowGap = 12;

quint32 masked(quint32 value, int depth)
{
    return depth == 16 ? value & 0xFFFFU : value;
}

/// Memory of a screen in which every pixel is stale at first.
class Screen
{
public:
    Screen(QSize size, int depth)
        : m_size(size)
        , m_depth(depth)
        , m_step(size.height() * depth / 8 + kRowGap)
        , m_bytes(std::size_t(m_step) * std::size_t(size.width()), uchar(kStale & 0xFFU))
    { }

    [[nodiscard]] lumi::SlideTarget target() { return {m_bytes.data(), m_step, m_depth, m_size}; }

    [[nodiscard]] quint32 at(int row, int column) const
    {
        quint32 value = 0;
        std::memcpy(&value, m_bytes.data() + offset(row, column), std::size_t(m_depth) / 8);
        return value;
    }

    void set(int row, int column, quint32 value)
    {
        std::memcpy(m_bytes.data() + offset(row, column), &value, std::size_t(m_depth) / 8);
    }

    [[nodiscard]] QSize size() const { return m_size; }

    [[nodiscard]] int depth() const { return m_depth; }

    [[nodiscard]] bool operator==(const Screen &other) const { return m_bytes == other.m_bytes; }

private:
    [[nodiscard]] std::size_t offset(int row, int column) const
    {
        return std::size_t(row) * std::size_t(m_step) + std::size_t(column * m_depth / 8);
    }

    QSize m_size;
    int m_depth;
    int m_step;
    std::vector<uchar> m_bytes;
};

/// A picture in which adjacent pixels differ and no pixel is black or stale.
class Picture
{
public:
    Picture(QSize size, int depth)
        : m_size(size)
        , m_depth(depth)
        , m_bytes(std::size_t(size.width()) * std::size_t(size.height()) * std::size_t(depth) / 8)
    {
        for (int row = 0; row < size.width(); ++row) {
            for (int column = 0; column < size.height(); ++column) {
                const quint32 value = at(row, column);
                std::memcpy(m_bytes.data()
                                + std::size_t(row * size.height() + column) * std::size_t(depth)
                                    / 8,
                            &value, std::size_t(depth) / 8);
            }
        }
    }

    [[nodiscard]] quint32 at(int row, int column) const
    {
        const auto r = quint32(row);
        const auto c = quint32(column);
        return m_depth == 16 ? 1U + (r * 251U + c * 37U) % 20000U
                             : 0xFF010101U + (r * 65537U + c * 263U) % 0xF00000U;
    }

    [[nodiscard]] lumi::SlideSource source() const { return {m_bytes.data(), m_size}; }

    [[nodiscard]] QSize size() const { return m_size; }

private:
    QSize m_size;
    int m_depth;
    std::vector<uchar> m_bytes;
};

quint32 black(int depth)
{
    return depth == 16 ? 0 : kBlack32;
}

quint32 signPixel(int index, int depth)
{
    const quint32 pixel = lumi::slideSignPixels().at(std::size_t(index));
    const quint32 wide = pixel == lumi::kSlideSignInk ? 0xFF2965BDU : 0xFFCEDFFFU;
    return depth == 16 ? pixel : wide;
}

void expectSign(Screen *screen, SlideSign sign)
{
    const int rows = screen->size().width();
    for (int i = 0; sign != SlideSign::None && i < 3600; ++i) {
        const int row = sign == SlideSign::Next ? rows - 60 + i / 60 : i / 60;
        screen->set(row, i % 60,
                    signPixel(sign == SlideSign::Next ? 3599 - i : i, screen->depth()));
    }
}

/// The expected pixels, drawn one by one with a pointer that may stay behind.
Screen expected(const Picture &picture, const Screen &before, SlideSign sign)
{
    Screen screen = before;
    expectSign(&screen, sign);
    const qint64 rows = before.size().width();
    const qint64 columns = before.size().height();
    const qint64 w = picture.size().width();
    const qint64 h = picture.size().height();
    const bool byRows = (rows << 16) / w <= (columns << 16) / h;
    const qint64 num = byRows ? rows : columns;
    const qint64 den = byRows ? w : h;
    const qint64 firstRow = (rows >> 1) - ((w * num / den) >> 1) + (w & 1);
    const qint64 firstColumn = (columns >> 1) - ((h * num / den) >> 1) + (h & 1);
    for (int row = 0; row < rows; ++row) {
        const bool outside = row < firstRow || row >= firstRow + w * num / den;
        int write = 0;
        for (int column = 0; column < columns; ++column) {
            const bool high = column >= columns - 60;
            const bool spared = !outside && high
                && ((sign == SlideSign::Next && row > rows - 60)
                    || (sign == SlideSign::Previous && row <= 59));
            if (spared) {
                continue;
            }
            const bool beside
                = outside || column < firstColumn || column >= firstColumn + h * num / den;
            const qint64 r = std::min(w - 1, (row - firstRow) * den / num);
            const qint64 c = std::min(h - 1, (column - firstColumn) * den / num);
            screen.set(row, write++, beside ? black(screen.depth()) : picture.at(int(r), int(c)));
        }
    }
    return screen;
}

void addDepths(const std::function<void(int)> &add)
{
    add(16);
    add(32);
}

/// Whether the pixel of the sign is drawn, not its ground. The sign is turned like a raster.
bool isInk(int x, int y)
{
    return lumi::slideSignPixels().at(std::size_t(x * 60 + y)) == 0x2B37;
}

} // namespace

class TestSlideDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void places_data();
    void places();
    void sourcesStayInThePicture_data();
    void sourcesStayInThePicture();
    void drawsEveryPixel_data();
    void drawsEveryPixel();
    void theSignCoversItsCornerOnly_data();
    void theSignCoversItsCornerOnly();
    void thePictureCoversTheSignAndSparesAnotherCorner_data();
    void thePictureCoversTheSignAndSparesAnotherCorner();
    void theSignHasAFrame();
    void theSignHasItsForm();
    void screensSmallerThanTheSign();
    void nothingToDraw_data();
    void nothingToDraw();
};

void TestSlideDrawing::places_data()
{
    lumi::test::columns<QSize, SlideSpan, SlideSpan>();
    QTest::newRow("of the screen's size")
        << QSize(640, 480) << SlideSpan{0, 640} << SlideSpan{0, 480};
    QTest::newRow("twice as large") << QSize(1280, 960) << SlideSpan{0, 640} << SlideSpan{0, 480};
    QTest::newRow("small ones grow") << QSize(64, 48) << SlideSpan{0, 640} << SlideSpan{0, 480};
    QTest::newRow("wide: bars above and below")
        << QSize(640, 320) << SlideSpan{0, 640} << SlideSpan{80, 320};
    QTest::newRow("upright: bars at the sides")
        << QSize(480, 640) << SlideSpan{140, 360} << SlideSpan{0, 480};
    QTest::newRow("an odd width begins one pixel later")
        << QSize(641, 480) << SlideSpan{1, 640} << SlideSpan{1, 479};
    QTest::newRow("an odd height too") << QSize(642, 481) << SlideSpan{0, 640} << SlideSpan{2, 479};
    QTest::newRow("one pixel") << QSize(1, 1) << SlideSpan{81, 480} << SlideSpan{1, 480};
    QTest::newRow("a line") << QSize(65500, 1) << SlideSpan{0, 640} << SlideSpan{241, 0};
    QTest::newRow("a column") << QSize(1, 65500) << SlideSpan{321, 0} << SlideSpan{0, 480};
    QTest::newRow("no picture") << QSize(0, 480) << SlideSpan{} << SlideSpan{};
}

void TestSlideDrawing::places()
{
    const auto [picture, rows, columns] = lumi::test::row<QSize, SlideSpan, SlideSpan>();
    const SlidePlacement placement = placeSlide(picture, QSize(640, 480));
    QCOMPARE(placement.rows, rows);
    QCOMPARE(placement.columns, columns);
}

void TestSlideDrawing::sourcesStayInThePicture_data()
{
    QTest::addColumn<QSize>("picture");
    const QList<QSize> sizes{{1, 1},     {3, 2},      {639, 479},  {641, 481}, {1279, 33},
                             {33, 1279}, {65535, 17}, {17, 65535}, {640, 480}, {2, 4000}};
    for (const QSize size : sizes) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void TestSlideDrawing::sourcesStayInThePicture()
{
    QFETCH(QSize, picture);
    const SlidePlacement placement = placeSlide(picture, QSize(640, 480));
    const auto rows = lumi::slideSources(placement, placement.rows, picture.width(), 640);
    const auto columns = lumi::slideSources(placement, placement.columns, picture.height(), 480);
    QCOMPARE(rows.size(), std::size_t(640));
    QCOMPARE(columns.size(), std::size_t(480));
    for (const int row : rows) {
        QVERIFY(row >= -1 && row < picture.width());
    }
    for (const int column : columns) {
        QVERIFY(column >= -1 && column < picture.height());
    }
}

void TestSlideDrawing::drawsEveryPixel_data()
{
    lumi::test::columns<QSize, QSize, int, int>();
    const QList<QSize> pictures{{640, 480}, {400, 300}, {83, 61}, {61, 83},  {1281, 100},
                                {99, 1283}, {1, 1},     {7, 640}, {641, 481}};
    addDepths([&pictures](int depth) {
        for (const QSize picture : pictures) {
            for (int sign = 0; sign <= 2; ++sign) {
                for (const QSize screen : {QSize(640, 480), QSize(320, 241)}) {
                    QTest::addRow("%d x %d on %d x %d, sign %d, %d bits", picture.width(),
                                  picture.height(), screen.width(), screen.height(), sign, depth)
                        << picture << screen << sign << depth;
                }
            }
        }
    });
}

void TestSlideDrawing::drawsEveryPixel()
{
    const auto [picture, screen, sign, depth] = lumi::test::row<QSize, QSize, int, int>();
    const Picture drawn(picture, depth);
    Screen memory(screen, depth);
    const Screen wanted = expected(drawn, memory, SlideSign(sign));
    lumi::drawSlide(memory.target(), drawn.source(), SlideSign(sign));
    QVERIFY(memory == wanted);
}

void TestSlideDrawing::theSignCoversItsCornerOnly_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("sign");
    addDepths([](int depth) {
        for (int sign = 0; sign <= 2; ++sign) {
            QTest::addRow("sign %d, %d bits", sign, depth) << depth << sign;
        }
    });
}

void TestSlideDrawing::theSignCoversItsCornerOnly()
{
    QFETCH(int, depth);
    QFETCH(int, sign);
    Screen screen(QSize(640, 480), depth);
    Screen wanted = screen;
    expectSign(&wanted, SlideSign(sign));
    lumi::drawSlideSign(screen.target(), SlideSign(sign));
    QVERIFY(screen == wanted);
    const int firstRow = sign == 1 ? 580 : 0;
    QCOMPARE(screen.at(firstRow, 0) != masked(kStale, depth), sign != 0);
    QCOMPARE(screen.at(firstRow + 59, 59) != masked(kStale, depth), sign != 0);
    QCOMPARE(screen.at(firstRow, 60), masked(kStale, depth));
}

void TestSlideDrawing::thePictureCoversTheSignAndSparesAnotherCorner_data()
{
    theSignCoversItsCornerOnly_data();
}

void TestSlideDrawing::thePictureCoversTheSignAndSparesAnotherCorner()
{
    QFETCH(int, depth);
    QFETCH(int, sign);
    const Picture picture(QSize(640, 480), depth);
    Screen screen(QSize(640, 480), depth);
    lumi::drawSlide(screen.target(), picture.source(), SlideSign(sign));
    const auto isStale = [&screen, depth](int row, int column) {
        return screen.at(row, column) == masked(kStale, depth);
    };
    // The sign was at columns 0 to 59. None of it is left.
    QCOMPARE(screen.at(30, 30), picture.at(30, 30));
    QCOMPARE(screen.at(610, 30), picture.at(610, 30));
    // The pixels left out are at columns 420 and above.
    QCOMPARE(isStale(59, 420), sign == 2);
    QCOMPARE(isStale(0, 479), sign == 2);
    QVERIFY(!isStale(60, 420));
    QVERIFY(!isStale(59, 419));
    QCOMPARE(isStale(581, 420), sign == 1);
    QCOMPARE(isStale(639, 479), sign == 1);
    QVERIFY(!isStale(580, 420)); // one row less than the height of the sign
    QVERIFY(!isStale(581, 419));
}

void TestSlideDrawing::theSignHasAFrame()
{
    const lumi::SlideSignPixels &pixels = lumi::slideSignPixels();
    QCOMPARE(pixels.size() * sizeof(pixels[0]), std::size_t(7200));
    for (const quint16 pixel : pixels) {
        QVERIFY(pixel == 0x2B37 || pixel == 0xCEFF);
    }
    // Background, two lines of frame, background.
    for (int i = 5; i < 55; ++i) {
        for (const bool turned : {false, true}) {
            const auto ink = [&](int depth) {
                return turned ? isInk(depth, i) : isInk(i, depth);
            };
            for (const int edge : {0, 59}) {
                const int inwards = edge == 0 ? 1 : -1;
                QVERIFY(!ink(edge));
                QVERIFY(ink(edge + inwards));
                QVERIFY(ink(edge + 2 * inwards));
                QVERIFY(!ink(edge + 3 * inwards));
            }
        }
    }
}

void TestSlideDrawing::theSignHasItsForm()
{
    // The arrow becomes wider from its tip at the left. The bars behind it become narrower.
    const auto inkOf = [](int x) {
        int count = 0;
        for (int y = 4; y < 56; ++y) {
            count += isInk(x, y) ? 1 : 0;
        }
        return count;
    };
    QList<int> widths;
    QList<int> heights;
    for (int x = 3; x < 57; ++x) {
        if (inkOf(x) > 0 && inkOf(x - 1) == 0) {
            widths.append(0);
        }
        if (inkOf(x) > 0) {
            ++widths.last();
            heights.append(inkOf(x));
        }
    }
    QCOMPARE(widths.size(), 4);
    QVERIFY(std::is_sorted(heights.begin(), heights.begin() + widths.first()));
    QVERIFY(heights.first() <= 2 && heights.at(widths.first() - 1) > 30);
    QVERIFY(std::is_sorted(widths.rbegin(), widths.rend()));
}

void TestSlideDrawing::screensSmallerThanTheSign()
{
    for (const QSize size : {QSize(40, 30), QSize(60, 59), QSize(59, 60), QSize(1, 1)}) {
        for (const SlideSign sign : {SlideSign::None, SlideSign::Next, SlideSign::Previous}) {
            const Picture picture(QSize(5, 4), 32);
            Screen screen(size, 32);
            lumi::drawSlide(screen.target(), picture.source(), sign);
            lumi::drawSlideSign(screen.target(), sign);
            QVERIFY(sign == SlideSign::None || screen.at(0, 0) != kStale);
        }
    }
}

void TestSlideDrawing::nothingToDraw_data()
{
    lumi::test::columns<int, QSize>();
    QTest::newRow("no rows") << 32 << QSize(0, 10);
    QTest::newRow("no columns") << 32 << QSize(10, 0);
    QTest::newRow("no size") << 16 << QSize(-1, -1);
    QTest::newRow("8 bits") << 8 << QSize(4, 4);
    QTest::newRow("24 bits") << 24 << QSize(4, 4);
}

void TestSlideDrawing::nothingToDraw()
{
    const auto [depth, picture] = lumi::test::row<int, QSize>();
    const std::vector<uchar> bytes(64, 1);
    Screen screen(QSize(100, 100), 32);
    const Screen before = screen;
    lumi::SlideTarget target = screen.target();
    target.depth = depth;
    lumi::drawSlide(target, {bytes.data(), picture}, SlideSign::None);
    QVERIFY(screen == before);
}

LUMI_TEST(TestSlideDrawing)
#include "TestSlideDrawing.moc"
