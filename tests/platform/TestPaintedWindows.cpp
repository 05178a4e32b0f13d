// SPDX-License-Identifier: MIT
// Windows that are painted directly beside, below and after others, and that grow, shrink and move.
#include "platform/screen/FrameBuffer.h"
#include "platform/screen/QDirectPainter.h"
#include "tests/platform/PainterTest.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::test::BareWindow;
using lumi::test::drawColour;
using lumi::test::drawPattern;
using lumi::test::GreenWindow;
using lumi::test::kYellow;
using lumi::test::patternFault;
using lumi::test::shotOf;
using lumi::test::writePixel;

namespace {

constexpr QRgb kBlack = 0xFF000000U;
constexpr quint32 kRed = 0xFFFF0000U;
constexpr quint32 kGreen = 0xFF00FF00U;
constexpr quint32 kBlue = 0xFF0000FFU;

/// Leaves the pixels of a deleted window in the memory, which another window keeps alive.
class StaleMemory
{
public:
    [[nodiscard]] bool fill()
    {
        if (!keeper.showNow()) {
            return false;
        }
        drawColour(&keeper, kBlue);
        if (!m_earlier.showNow()) {
            return false;
        }
        drawColour(&m_earlier, kRed);
        m_earlier.close();
        return FrameBuffer::instance().isAllocated();
    }

    BareWindow keeper{QRect(600, 440, 40, 40)};

private:
    BareWindow m_earlier{QRect(0, 0, 400, 300)};
};

} // namespace

class TestPaintedWindows : public PainterTest
{
    Q_OBJECT

private Q_SLOTS:
    void anotherWindowComesAndGoes();
    void boxIsDraggedOver();
    void twoWindowsSideBySide();
    void newSurfaceStartsBlack();
    void grownWindowShowsNothingStale();
    void grownWindowPaintsItself();
    void nextDrawAfterGrowthStartsBlack();
    void shrunkWindow();
    void movedWindowKeepsItsPixelsOnTheNextDraw_data();
    void movedWindowKeepsItsPixelsOnTheNextDraw();
};

void TestPaintedWindows::anotherWindowComesAndGoes()
{
    BareWindow top(QRect(0, 0, 640, 480));
    QVERIFY(top.showNow());
    drawPattern(&top);
    {
        QWidget popup(&top, Qt::Popup);
        popup.setGeometry(200, 100, 150, 120);
        popup.show();
        QVERIFY(QTest::qWaitForWindowExposed(&popup));
        const QImage shown = lumi::test::screenShot();
        QVERIFY(!patternFault(shown, popup.geometry(), QPoint(), 32).isEmpty());
        QCOMPARE(patternFault(shown, QRect(0, 0, 200, 480), QPoint(), 32), QString());
        // Drawing into a covered window does not draw over the popup.
        drawPattern(&top);
        QVERIFY(!patternFault(lumi::test::screenShot(), popup.geometry(), QPoint(), 32).isEmpty());
    }
    QTRY_COMPARE(patternFault(lumi::test::screenShot(), top.rect(), QPoint(), 32), QString());
}

void TestPaintedWindows::boxIsDraggedOver()
{
    BareWindow top(QRect(0, 0, 640, 480));
    QVERIFY(top.showNow());
    drawPattern(&top);
    BareWindow box(QRect(100, 100, 120, 80));
    QVERIFY(box.showNow());
    for (int step = 0; step < 5; ++step) {
        box.move(100 + step * 37, 100 + step * 41);
        QTRY_COMPARE(lumi::test::screenShot().pixel(box.geometry().center()), kYellow);
    }
    const QRect before(100, 100, 37, 41);
    QTRY_COMPARE(patternFault(lumi::test::screenShot(), before, QPoint(), 32), QString());
    box.close();
    QTRY_COMPARE(patternFault(lumi::test::screenShot(), top.rect(), QPoint(), 32), QString());
}

void TestPaintedWindows::twoWindowsSideBySide()
{
    BareWindow left(QRect(10, 10, 200, 150));
    BareWindow right(QRect(300, 40, 180, 210));
    QVERIFY(left.showNow());
    QVERIFY(right.showNow());
    drawPattern(&left);
    drawColour(&right, kBlue);
    QCOMPARE(patternFault(shotOf(&left), left.rect(), QPoint(), 32), QString());
    QCOMPARE(shotOf(&right).pixel(179, 209), kBlue);
    right.hide();
    left.repaint();
    QCOMPARE(patternFault(shotOf(&left), left.rect(), QPoint(), 32), QString());
    QVERIFY(FrameBuffer::instance().isAllocated());
}

void TestPaintedWindows::newSurfaceStartsBlack()
{
    StaleMemory stale;
    QVERIFY(stale.fill());
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    QVERIFY(QDirectPainter(&top).frameBuffer() != nullptr);
    const QImage shown = shotOf(&top);
    QCOMPARE(shown.pixel(0, 0), kBlack);
    QCOMPARE(shown.pixel(99, 79), kBlack);
    QCOMPARE(shotOf(&stale.keeper).pixel(0, 0), kBlue);
}

// The memory still has the pixels of another window there. They must not be shown.
void TestPaintedWindows::grownWindowShowsNothingStale()
{
    StaleMemory stale;
    QVERIFY(stale.fill());
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    drawPattern(&top);
    top.resize(180, 160);
    QTRY_COMPARE(shotOf(&top).pixel(150, 140), kYellow);
    const QImage shown = shotOf(&top);
    QCOMPARE(patternFault(shown, QRect(0, 0, 100, 80), QPoint(), 32), QString());
    for (int y = 0; y < 160; ++y) {
        for (int x = 0; x < 180; ++x) {
            if (x >= 100 || y >= 80) {
                QCOMPARE(shown.pixel(x, y), kYellow);
            }
        }
    }
}

void TestPaintedWindows::grownWindowPaintsItself()
{
    GreenWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    drawPattern(&top);
    QCOMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
    const int before = top.paints;
    top.repaint(QRect(10, 10, 5, 5));
    QCOMPARE(top.paints, before);
    top.resize(180, 160);
    QTRY_COMPARE(shotOf(&top).pixel(150, 140), kGreen);
    QCOMPARE(patternFault(shotOf(&top), QRect(0, 0, 100, 80), QPoint(), 32), QString());
}

void TestPaintedWindows::nextDrawAfterGrowthStartsBlack()
{
    StaleMemory stale;
    QVERIFY(stale.fill());
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    drawPattern(&top);
    top.resize(180, 160);
    QTRY_COMPARE(shotOf(&top).size(), QSize(180, 160));
    {
        QDirectPainter painter(&top);
        writePixel(painter.frameBuffer(), painter.lineStep(), painter.yOffset() + 170,
                   painter.xOffset() + 159 - 150, kGreen, 32);
    }
    QTRY_COMPARE(shotOf(&top).pixel(170, 150), kGreen);
    const QImage shown = shotOf(&top);
    QCOMPARE(shown.pixel(169, 150), kBlack);
    QCOMPARE(shown.pixel(179, 0), kBlack);
    QCOMPARE(patternFault(shown, QRect(0, 0, 100, 80), QPoint(), 32), QString());
}

void TestPaintedWindows::shrunkWindow()
{
    BareWindow top(QRect(50, 40, 180, 160));
    QVERIFY(top.showNow());
    drawPattern(&top);
    top.resize(70, 60);
    QTRY_COMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
    drawPattern(&top);
    QCOMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
}

void TestPaintedWindows::movedWindowKeepsItsPixelsOnTheNextDraw_data()
{
    lumi::test::columns<int, QPoint>();
    QTest::newRow("far away, 32 bits") << 32 << QPoint(400, 300);
    QTest::newRow("far away, 16 bits") << 16 << QPoint(400, 300);
    QTest::newRow("a bit right and down, 32 bits") << 32 << QPoint(57, 51);
    QTest::newRow("a bit left and up, 16 bits") << 16 << QPoint(41, 33);
}

// Drawing only a corner after a move, as the slideshow does with its sign.
void TestPaintedWindows::movedWindowKeepsItsPixelsOnTheNextDraw()
{
    const auto [depth, place] = lumi::test::row<int, QPoint>();
    m_machine->depth = depth;
    BareWindow top(QRect(50, 40, 180, 160));
    QVERIFY(top.showNow());
    drawPattern(&top);
    top.move(place);
    QTRY_COMPARE(top.mapToGlobal(QPoint()), place);
    {
        QDirectPainter painter(&top);
        writePixel(painter.frameBuffer(), painter.lineStep(), painter.yOffset(), painter.xOffset(),
                   0, depth);
    }
    QTRY_COMPARE(patternFault(shotOf(&top), QRect(0, 0, 180, 159), QPoint(), depth), QString());
    const QImage shown = shotOf(&top);
    QCOMPARE(patternFault(shown, QRect(1, 159, 179, 1), QPoint(), depth), QString());
    QCOMPARE(shown.pixel(0, 159), kBlack);
}

LUMI_TEST(TestPaintedWindows)
#include "TestPaintedWindows.moc"
