// SPDX-License-Identifier: MIT
// Creation and end of a widget's surface, and of the frame buffer memory with the last surface.
#include "platform/screen/FrameBuffer.h"
#include "platform/screen/QDirectPainter.h"
#include "tests/platform/PainterTest.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <cstring>
#include <memory>

using lumi::test::BareWindow;
using lumi::test::drawPattern;
using lumi::test::drawWith;
using lumi::test::GreenWindow;
using lumi::test::kYellow;
using lumi::test::patternFault;
using lumi::test::shotOf;

class TestFrameBufferMemory : public PainterTest
{
    Q_OBJECT

private Q_SLOTS:
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
};

void TestFrameBufferMemory::hiddenLosesItsSurface()
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

void TestFrameBufferMemory::hiddenParentTakesTheSurface()
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

// A late timer may draw after its viewer was closed. It gets memory, but nothing is shown.
void TestFrameBufferMemory::hiddenWidgetGetsNone()
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

void TestFrameBufferMemory::minimisedKeepsItsSurface()
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

void TestFrameBufferMemory::deletedWidget()
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

void TestFrameBufferMemory::widgetDiesUnderItsPainter()
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

void TestFrameBufferMemory::widgetHidesUnderItsPainter()
{
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    {
        QDirectPainter painter(&top);
        QVERIFY(painter.frameBuffer() != nullptr);
        top.hide();
        drawWith(painter, [](int, int) {
            return quint32(0xFFFF0000U);
        });
        QVERIFY(FrameBuffer::instance().isAllocated());
    }
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestFrameBufferMemory::unusedPainterLeavesNoTrace()
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

void TestFrameBufferMemory::memoryStaysUntilTheLastPainter()
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

void TestFrameBufferMemory::depthStaysWhileMemoryLives()
{
    BareWindow top(QRect(50, 40, 100, 80));
    QVERIFY(top.showNow());
    drawPattern(&top);
    m_machine->depth = 16;
    QDirectPainter painter(&top);
    QCOMPARE(painter.depth(), 32);
    QCOMPARE(painter.lineStep(), 1920);
}

LUMI_TEST(TestFrameBufferMemory)
#include "TestFrameBufferMemory.moc"
