// SPDX-License-Identifier: MIT
#include "platform/FrameBuffer.h"
#include "platform/QDirectPainter.h"
#include "platform/toolkit/QScrollView.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QTest>

#include <memory>
#include <vector>

using lumi::test::BareWindow;
using lumi::test::drawColour;
using lumi::test::drawPattern;
using lumi::test::drawWith;
using lumi::test::FakeMachine;
using lumi::test::patternFault;
using lumi::test::patternPixel;
using lumi::test::shotOf;
using lumi::test::writePixel;

namespace {

constexpr QRgb kYellow = 0xFFFFFF00U;
constexpr QRgb kBlack = 0xFF000000U;
constexpr quint32 kRed = 0xFFFF0000U;
constexpr quint32 kGreen = 0xFF00FF00U;
constexpr quint32 kBlue = 0xFF0000FFU;

void rowPerDepth()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("16 bits") << 16;
    QTest::newRow("32 bits") << 32;
}

/// Paints itself green and counts.
class GreenWindow : public BareWindow
{
public:
    using BareWindow::BareWindow;

    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        QPainter(this).fillRect(event->rect(), Qt::green);
    }
};

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

class TestQDirectPainter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void geometry_data();
    void geometry();
    void lineStep_data();
    void lineStep();
    void depthIsTheMachines();
    void everyPixel_data();
    void everyPixel();
    void photoRasterStandsUpright_data();
    void photoRasterStandsUpright();
    void grabShowsIt_data();
    void grabShowsIt();
    void partialRepaint();
    void windowOutsideIsClamped_data();
    void windowOutsideIsClamped();
    void windowBiggerThanTheDesktop();
    void anotherWindowComesAndGoes();
    void boxIsDraggedOver();
    void twoWindowsSideBySide();
    void drawnBeforeItIsExposed();
    void drawnInsideAPaintEvent();
    void drawnInsideTheParentsPaintEvent();
    void grownWindowShowsNothingStale();
    void grownWindowPaintsItself();
    void nextDrawAfterGrowthStartsBlack();
    void shrunkWindow();
    void movedWindowStaysRight();
    void movedWindowKeepsItsPixelsOnTheNextDraw_data();
    void movedWindowKeepsItsPixelsOnTheNextDraw();
    void newSurfaceStartsBlack();
    void viewportOfAScrollArea();
    void hiddenLosesItsSurface();
    void hiddenParentTakesTheSurface();
    void hiddenWidgetGetsNone();
    void minimisedKeepsItsSurface();
    void deletedWidget();
    void widgetDiesUnderItsPainter();
    void widgetHidesUnderItsPainter();
    void unusedPainterLeavesNoTrace();
    void memoryStaysUntilTheLastPainter();
    void depthStaysWhileMemoryLives();

private:
    FakeMachine *m_machine = nullptr;
};

void TestQDirectPainter::init()
{
    m_machine = FakeMachine::install();
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestQDirectPainter::cleanup()
{
    QVERIFY(!FrameBuffer::instance().isAllocated());
    Machine::install(nullptr);
}

void TestQDirectPainter::geometry_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<QRect>("child");
    QTest::addColumn<QRect>("turned");
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
    QFETCH(QRect, window);
    QFETCH(QRect, child);
    QFETCH(QRect, turned);
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

void TestQDirectPainter::lineStep_data()
{
    rowPerDepth();
}

void TestQDirectPainter::lineStep()
{
    QFETCH(int, depth);
    m_machine->depth = depth;
    BareWindow top(QRect(0, 0, 50, 50));
    QDirectPainter painter(&top);
    QCOMPARE(painter.depth(), depth);
    QCOMPARE(painter.lineStep(), 480 * depth / 8);
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
    rowPerDepth();
}

// The child has odd sides and an odd place, and nothing is written beside it.
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
    rowPerDepth();
}

// A decoded photo has its pixel of column x, row r at x * H + (H - 1 - r); copying it line by
// line must show it upright.
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
    rowPerDepth();
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

void TestQDirectPainter::partialRepaint()
{
    BareWindow top(QRect(40, 30, 160, 120));
    QVERIFY(top.showNow());
    drawPattern(&top);
    top.repaint(QRect(3, 5, 17, 29));
    top.repaint(QRegion(QRect(50, 50, 11, 13)) + QRect(90, 20, 7, 80));
    QCOMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
}

void TestQDirectPainter::windowOutsideIsClamped_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QPoint>("clamped");
    QTest::newRow("off the top left") << QPoint(-60, -40) << QPoint(0, 0);
    QTest::newRow("off the bottom right") << QPoint(600, 450) << QPoint(440, 380);
    QTest::newRow("off the left only") << QPoint(-3, 30) << QPoint(0, 30);
    QTest::newRow("off the bottom only") << QPoint(30, 400) << QPoint(30, 380);
}

void TestQDirectPainter::windowOutsideIsClamped()
{
    QFETCH(QPoint, place);
    QFETCH(QPoint, clamped);
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
    // What is on the screen is in its true place.
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

void TestQDirectPainter::anotherWindowComesAndGoes()
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
        // Drawing while it is covered leaves the popup alone.
        drawPattern(&top);
        QVERIFY(!patternFault(lumi::test::screenShot(), popup.geometry(), QPoint(), 32).isEmpty());
    }
    QTRY_COMPARE(patternFault(lumi::test::screenShot(), top.rect(), QPoint(), 32), QString());
}

void TestQDirectPainter::boxIsDraggedOver()
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

void TestQDirectPainter::twoWindowsSideBySide()
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

// The memory still holds what another window drew there; it must not come through.
void TestQDirectPainter::grownWindowShowsNothingStale()
{
    BareWindow keeper(QRect(600, 440, 40, 40));
    QVERIFY(keeper.showNow());
    drawColour(&keeper, kBlue);
    BareWindow earlier(QRect(0, 0, 400, 300));
    QVERIFY(earlier.showNow());
    drawColour(&earlier, kRed);
    earlier.close();
    QVERIFY(FrameBuffer::instance().isAllocated());
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

void TestQDirectPainter::grownWindowPaintsItself()
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

void TestQDirectPainter::nextDrawAfterGrowthStartsBlack()
{
    BareWindow keeper(QRect(600, 440, 40, 40));
    QVERIFY(keeper.showNow());
    drawColour(&keeper, kBlue);
    BareWindow earlier(QRect(0, 0, 400, 300));
    QVERIFY(earlier.showNow());
    drawColour(&earlier, kRed);
    earlier.close();
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

void TestQDirectPainter::shrunkWindow()
{
    BareWindow top(QRect(50, 40, 180, 160));
    QVERIFY(top.showNow());
    drawPattern(&top);
    top.resize(70, 60);
    QTRY_COMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
    drawPattern(&top);
    QCOMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
}

void TestQDirectPainter::movedWindowStaysRight()
{
    BareWindow top(QRect(50, 40, 180, 160));
    QVERIFY(top.showNow());
    drawPattern(&top);
    top.move(301, 207);
    top.repaint();
    QTRY_COMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
    drawPattern(&top);
    QCOMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
}

void TestQDirectPainter::movedWindowKeepsItsPixelsOnTheNextDraw_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("far away, 32 bits") << 32 << QPoint(400, 300);
    QTest::newRow("far away, 16 bits") << 16 << QPoint(400, 300);
    QTest::newRow("a bit right and down, 32 bits") << 32 << QPoint(57, 51);
    QTest::newRow("a bit left and up, 16 bits") << 16 << QPoint(41, 33);
}

// A draw that touches only a corner, as the sign of the slideshow does, after a move.
void TestQDirectPainter::movedWindowKeepsItsPixelsOnTheNextDraw()
{
    QFETCH(int, depth);
    QFETCH(QPoint, place);
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

void TestQDirectPainter::newSurfaceStartsBlack()
{
    BareWindow keeper(QRect(600, 440, 40, 40));
    QVERIFY(keeper.showNow());
    drawColour(&keeper, kBlue);
    BareWindow earlier(QRect(0, 0, 400, 300));
    QVERIFY(earlier.showNow());
    drawColour(&earlier, kRed);
    earlier.close();
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    QVERIFY(QDirectPainter(&top).frameBuffer() != nullptr);
    const QImage shown = shotOf(&top);
    QCOMPARE(shown.pixel(0, 0), kBlack);
    QCOMPARE(shown.pixel(99, 79), kBlack);
    QCOMPARE(shotOf(&keeper).pixel(0, 0), kBlue);
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

void TestQDirectPainter::hiddenLosesItsSurface()
{
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    drawPattern(&top);
    QVERIFY(FrameBuffer::instance().hasSurface(&top));
    QVERIFY(FrameBuffer::instance().isAllocated());
    top.hide();
    QVERIFY(!FrameBuffer::instance().hasSurface(&top));
    QVERIFY(!FrameBuffer::instance().isAllocated());
    QVERIFY(top.showNow());
    QTRY_COMPARE(shotOf(&top).pixel(50, 50), kYellow);
}

void TestQDirectPainter::hiddenParentTakesTheSurface()
{
    BareWindow top(QRect(50, 40, 100, 80));
    QWidget child(&top);
    child.setGeometry(10, 10, 50, 50);
    QVERIFY(top.showNow());
    drawPattern(&child);
    top.hide();
    QVERIFY(!FrameBuffer::instance().hasSurface(&child));
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

// A late timer may draw after its viewer was closed. It gets memory to write to, and no more.
void TestQDirectPainter::hiddenWidgetGetsNone()
{
    BareWindow top(QRect(50, 40, 100, 80));
    drawPattern(&top);
    QVERIFY(!FrameBuffer::instance().hasSurface(&top));
    QVERIFY(!FrameBuffer::instance().isAllocated());
    QVERIFY(top.showNow());
    QCOMPARE(shotOf(&top).pixel(50, 50), kYellow);
    top.hide();
    drawPattern(&top);
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestQDirectPainter::minimisedKeepsItsSurface()
{
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    drawPattern(&top);
    top.showMinimized();
    QTest::qWait(20);
    QVERIFY(FrameBuffer::instance().hasSurface(&top));
    top.showNormal();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_COMPARE(patternFault(shotOf(&top), top.rect(), QPoint(), 32), QString());
}

void TestQDirectPainter::deletedWidget()
{
    BareWindow top(QRect(50, 40, 100, 80));
    auto child = std::make_unique<QWidget>(&top);
    child->setGeometry(0, 0, 50, 50);
    QVERIFY(top.showNow());
    drawPattern(child.get());
    QVERIFY(FrameBuffer::instance().isAllocated());
    child.reset();
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestQDirectPainter::widgetDiesUnderItsPainter()
{
    auto top = std::make_unique<BareWindow>(QRect(50, 40, 100, 80));
    QVERIFY(top->showNow());
    {
        QDirectPainter painter(top.get());
        uchar *bits = painter.frameBuffer();
        QVERIFY(bits != nullptr);
        top.reset();
        std::memset(bits, 0xFF, static_cast<std::size_t>(painter.lineStep() * 640));
        QVERIFY(FrameBuffer::instance().isAllocated());
    }
    QVERIFY(!FrameBuffer::instance().isAllocated());
    top = std::make_unique<BareWindow>(QRect(50, 40, 100, 80));
    QDirectPainter painter(top.get());
    top.reset();
    QCOMPARE(painter.frameBuffer(), nullptr);
}

void TestQDirectPainter::widgetHidesUnderItsPainter()
{
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    {
        QDirectPainter painter(&top);
        QVERIFY(painter.frameBuffer() != nullptr);
        top.hide();
        drawWith(painter, [](int, int) {
            return kRed;
        });
        QVERIFY(FrameBuffer::instance().isAllocated());
    }
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestQDirectPainter::unusedPainterLeavesNoTrace()
{
    GreenWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    QCoreApplication::processEvents();
    const int before = top.paints;
    {
        const QDirectPainter painter(&top);
        QCOMPARE(painter.depth(), 32);
        QCOMPARE(painter.lineStep(), 1920);
    }
    QCOMPARE(top.paints, before);
    QVERIFY(!FrameBuffer::instance().hasSurface(&top));
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestQDirectPainter::memoryStaysUntilTheLastPainter()
{
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    auto one = std::make_unique<QDirectPainter>(&top);
    auto two = std::make_unique<QDirectPainter>(&top);
    uchar *bits = one->frameBuffer();
    QCOMPARE(two->frameBuffer(), bits);
    QCOMPARE(one->frameBuffer(), bits);
    top.hide();
    one.reset();
    QVERIFY(FrameBuffer::instance().isAllocated());
    two.reset();
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestQDirectPainter::depthStaysWhileMemoryLives()
{
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    drawPattern(&top);
    m_machine->depth = 16;
    QDirectPainter painter(&top);
    QCOMPARE(painter.depth(), 32);
    QCOMPARE(painter.lineStep(), 1920);
}

LUMI_TEST(TestQDirectPainter)
#include "TestQDirectPainter.moc"
