// SPDX-License-Identifier: MIT
// The position and the format of directly painted pixels, and how they reach the screen.
#include "platform/screen/QDirectPainter.h"
#include "platform/toolkit/QScrollView.h"
#include "tests/platform/PainterTest.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QPaintEvent>
#include <QRegularExpression>
#include <QTest>

#include <cstring>
#include <vector>

using lumi::test::BareWindow;
using lumi::test::drawPattern;
using lumi::test::kYellow;
using lumi::test::patternFault;
using lumi::test::patternPixel;
using lumi::test::shotOf;
using lumi::test::writePixel;

namespace {

/// A row for each depth, in a column "depth".
void addDepths()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("16 bits") << 16;
    QTest::newRow("32 bits") << 32;
}

/// Draws directly from inside its paint event, once.
class SelfDrawer : public BareWindow
{
public:
    using BareWindow::BareWindow;

    bool drawn = false;

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (!drawn) {
            drawn = true;
            drawPattern(this);
        }
    }
};

} // namespace

class TestQDirectPainter : public PainterTest
{
    Q_OBJECT

private Q_SLOTS:
    void geometry_data();
    void geometry();
    void depthIsTheMachines();
    void everyPixel_data();
    void everyPixel();
    void photoRasterStandsUpright_data();
    void photoRasterStandsUpright();
    void grabShowsIt_data();
    void grabShowsIt();
    void windowOutsideIsClamped_data();
    void windowOutsideIsClamped();
    void windowBiggerThanTheDesktop();
    void drawnBeforeItIsExposed();
    void drawnInsideAPaintEvent();
    void drawnInsideTheParentsPaintEvent();
    void viewportOfAScrollArea();
};

void TestQDirectPainter::geometry_data()
{
    lumi::test::columns<QRect, QRect, QRect>();
    QTest::newRow("whole desktop")
        << QRect(0, 0, 640, 480) << QRect(0, 0, 640, 480) << QRect(0, 0, 480, 640);
    QTest::newRow("top left corner")
        << QRect(0, 0, 100, 60) << QRect(0, 0, 100, 60) << QRect(420, 0, 60, 100);
    QTest::newRow("bottom right corner")
        << QRect(540, 420, 100, 60) << QRect(0, 0, 100, 60) << QRect(0, 540, 60, 100);
    QTest::newRow("child of a window in the middle")
        << QRect(37, 21, 200, 150) << QRect(11, 7, 101, 83) << QRect(369, 48, 83, 101);
    QTest::newRow("one pixel") << QRect(37, 21, 200, 150) << QRect(5, 9, 1, 1)
                               << QRect(449, 42, 1, 1);
}

void TestQDirectPainter::geometry()
{
    const auto [window, child, turned] = lumi::test::row<QRect, QRect, QRect>();
    BareWindow top(window);
    QWidget inside(&top);
    inside.setGeometry(child);
    QVERIFY(top.showNow());
    QDirectPainter painter(&inside);
    QCOMPARE(painter.xOffset(), turned.x());
    QCOMPARE(painter.yOffset(), turned.y());
    QCOMPARE(painter.width(), turned.width());
    QCOMPARE(painter.height(), turned.height());
}

void TestQDirectPainter::depthIsTheMachines()
{
    BareWindow top(QRect(0, 0, 50, 50));
    QCOMPARE(QDirectPainter(&top).depth(), 32);
    m_machine->depth = 16;
    QCOMPARE(QDirectPainter(&top).depth(), 16);
    m_machine->depth = 24;
    QCOMPARE(QDirectPainter(&top).depth(), 32);
}

void TestQDirectPainter::everyPixel_data()
{
    addDepths();
}

// The child has an odd size and an odd position. No pixel beside it may change.
void TestQDirectPainter::everyPixel()
{
    QFETCH(int, depth);
    m_machine->depth = depth;
    BareWindow top(QRect(37, 21, 201, 153));
    QWidget child(&top);
    child.setGeometry(11, 7, 101, 83);
    QVERIFY(top.showNow());
    drawPattern(&child);
    const QImage shown = shotOf(&top);
    QCOMPARE(patternFault(shown, child.geometry(), child.pos(), depth), QString());
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            if (!child.geometry().contains(x, y)) {
                QCOMPARE(shown.pixel(x, y), kYellow);
            }
        }
    }
}

void TestQDirectPainter::photoRasterStandsUpright_data()
{
    addDepths();
}

// The pixel of column x, row r of a decoded photo is at x * H + (H - 1 - r). The photo must appear
// upright when it is copied line by line.
void TestQDirectPainter::photoRasterStandsUpright()
{
    QFETCH(int, depth);
    m_machine->depth = depth;
    BareWindow top(QRect(100, 50, 90, 70));
    QVERIFY(top.showNow());
    const int width = top.width();
    const int height = top.height();
    const int bytes = depth / 8;
    std::vector<uchar> raster(static_cast<std::size_t>(width * height * bytes));
    for (int x = 0; x < width; ++x) {
        for (int r = 0; r < height; ++r) {
            writePixel(raster.data(), height * bytes, x, height - 1 - r, patternPixel(x, r, depth),
                       depth);
        }
    }
    {
        QDirectPainter painter(&top);
        QCOMPARE(painter.height(), width);
        QCOMPARE(painter.width(), height);
        uchar *line = painter.frameBuffer() + painter.yOffset() * painter.lineStep()
            + painter.xOffset() * bytes;
        for (int x = 0; x < width; ++x) {
            std::memcpy(line, raster.data() + x * height * bytes,
                        static_cast<std::size_t>(height * bytes));
            line += painter.lineStep();
        }
    }
    QCOMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), depth), QString());
}

void TestQDirectPainter::grabShowsIt_data()
{
    addDepths();
}

void TestQDirectPainter::grabShowsIt()
{
    QFETCH(int, depth);
    m_machine->depth = depth;
    BareWindow top(QRect(40, 30, 160, 120));
    QWidget child(&top);
    child.setGeometry(20, 10, 100, 90);
    QVERIFY(top.showNow());
    drawPattern(&child);
    QCOMPARE(patternFault(child.grab().toImage(), child.rect(), QPoint(), depth), QString());
    QCOMPARE(patternFault(top.grab().toImage(), child.geometry(), child.pos(), depth), QString());
    const QRect part(7, 13, 31, 17);
    QCOMPARE(patternFault(child.grab(part).toImage(), QRect(QPoint(), part.size()), -part.topLeft(),
                          depth),
             QString());
}

void TestQDirectPainter::windowOutsideIsClamped_data()
{
    lumi::test::columns<QPoint, QPoint>();
    QTest::newRow("off the top left") << QPoint(-60, -40) << QPoint(0, 0);
    QTest::newRow("off the bottom right") << QPoint(600, 450) << QPoint(440, 380);
    QTest::newRow("off the left only") << QPoint(-3, 30) << QPoint(0, 30);
    QTest::newRow("off the bottom only") << QPoint(30, 400) << QPoint(30, 380);
}

void TestQDirectPainter::windowOutsideIsClamped()
{
    const auto [place, clamped] = lumi::test::row<QPoint, QPoint>();
    BareWindow top(QRect(place, QSize(200, 100)));
    QWidget child(&top);
    child.setGeometry(10, 20, 150, 60);
    QVERIFY(top.showNow());
    QCOMPARE(top.mapToGlobal(QPoint()), place);
    {
        QDirectPainter painter(&child);
        QCOMPARE(painter.yOffset(), clamped.x() + 10);
        QCOMPARE(painter.xOffset(), 480 - (clamped.y() + 20) - 60);
        QCOMPARE(painter.height(), 150);
        QCOMPARE(painter.width(), 60);
    }
    drawPattern(&child);
    QCOMPARE(patternFault(child.grab().toImage(), child.rect(), QPoint(), 32), QString());
    // On the screen the pixels are in the window's real place.
    const QImage shown = lumi::test::screenShot();
    const QPoint origin = child.mapToGlobal(QPoint());
    const QRect visible = QRect(origin, child.size()) & shown.rect();
    QVERIFY(!visible.isEmpty());
    QCOMPARE(patternFault(shown, visible, origin, 32), QString());
}

void TestQDirectPainter::windowBiggerThanTheDesktop()
{
    BareWindow top(QRect(-20, -10, 800, 600));
    QWidget child(&top);
    child.setGeometry(100, 50, 700, 550);
    QVERIFY(top.showNow());
    {
        QDirectPainter painter(&child);
        QCOMPARE(painter.yOffset(), 100);
        QCOMPARE(painter.height(), 540);
        QCOMPARE(painter.xOffset(), 0);
        QCOMPARE(painter.width(), 430);
    }
    drawPattern(&child);
    const QImage grabbed = child.grab().toImage();
    QCOMPARE(patternFault(grabbed, QRect(0, 0, 540, 430), QPoint(), 32), QString());
    QCOMPARE(grabbed.pixel(540, 100), kYellow);
    QCOMPARE(grabbed.pixel(100, 430), kYellow);
}

void TestQDirectPainter::drawnBeforeItIsExposed()
{
    BareWindow top(QRect(60, 70, 150, 140));
    top.show();
    drawPattern(&top);
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_COMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
}

void TestQDirectPainter::drawnInsideAPaintEvent()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("[Rr]ecursive repaint")));
    SelfDrawer top(QRect(60, 70, 150, 140));
    QVERIFY(top.showNow());
    QTRY_VERIFY(top.drawn);
    QTRY_COMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
}

void TestQDirectPainter::drawnInsideTheParentsPaintEvent()
{
    class Parent : public BareWindow
    {
    public:
        using BareWindow::BareWindow;

        QWidget *child = nullptr;
        bool drawn = false;

    protected:
        void paintEvent(QPaintEvent *) override
        {
            if (child != nullptr && !drawn) {
                drawn = true;
                drawPattern(child);
            }
        }
    };

    QTest::failOnWarning(QRegularExpression(QStringLiteral("[Rr]ecursive repaint")));
    Parent top(QRect(60, 70, 150, 140));
    QWidget child(&top);
    child.setGeometry(10, 10, 80, 90);
    top.child = &child;
    QVERIFY(top.showNow());
    QTRY_VERIFY(top.drawn);
    QTRY_COMPARE(patternFault(shotOf(&child), child.rect(), QPoint(), 32), QString());
}

void TestQDirectPainter::viewportOfAScrollArea()
{
    BareWindow top(QRect(50, 40, 300, 200));
    QScrollView view(&top);
    view.setGeometry(20, 30, 250, 150);
    QVERIFY(top.showNow());
    drawPattern(view.viewport());
    const QWidget *port = view.viewport();
    QCOMPARE(patternFault(shotOf(port), port->rect(), QPoint(), 32), QString());
    view.update();
    port->window()->update();
    QCOMPARE(patternFault(shotOf(port), port->rect(), QPoint(), 32), QString());
}

LUMI_TEST(TestQDirectPainter)
#include "TestQDirectPainter.moc"
