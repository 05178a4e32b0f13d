// SPDX-License-Identifier: MIT
// The picture alone, in its own window, with rasters in which adjacent pixels differ.
#include "platform/screen/FrameBuffer.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "viewer/PictureScrollView.h"
#include "viewer/zoomPlacement.h"

#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>

#include <memory>
#include <vector>

using lumi::test::BareWindow;
using lumi::test::FakeMachine;
using lumi::test::patternPixel;
using lumi::test::shotOf;
using lumi::test::shownPixel;

namespace {

constexpr QRect kPlace(40, 30, 300, 200);

} // namespace

class TestPictureScrollView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void drawsWhatItIsGiven_data();
    void drawsWhatItIsGiven();
    void keysMoveThePicture_data();
    void keysMoveThePicture();
    void keysAreNotAccepted();
    void thePictureFollowsThePen();
    void thePenMovesByPixelsOfTheRaster();
    void movesStopAtTheEdges();
    void withoutARasterNothingIsDrawn();
    void aHiddenViewDrawsNothing();
    void aMenuOverThePictureIsNotDrawnOver();
    void nativeBarsAreOff();

private:
    void makePhoto(QSize size, int depth = 32);
    void show(int percent, QPoint origin = {});
    /// The first wrong pixel as text; empty if the picture is as it should be.
    [[nodiscard]] QString fault(int percent, QPoint origin) const;
    void drag(QPoint from, QPoint to);

    FakeMachine *m_machine = nullptr;
    std::unique_ptr<BareWindow> m_window;
    QPointer<PictureScrollView> m_view;
    QSize m_photo;
    int m_depth = 32;
    std::vector<uchar> m_raster;
    QPoint m_origin;
};

void TestPictureScrollView::init()
{
    m_machine = FakeMachine::install();
    m_window = std::make_unique<BareWindow>(kPlace);
    auto *layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    m_view = new PictureScrollView(m_window.get());
    layout->addWidget(m_view);
}

void TestPictureScrollView::cleanup()
{
    m_window.reset();
    QVERIFY(!FrameBuffer::instance().isAllocated());
    Machine::install(nullptr);
}

void TestPictureScrollView::makePhoto(QSize size, int depth)
{
    m_photo = size;
    m_depth = depth;
    m_machine->depth = depth;
    const int step = size.height() * (depth / 8);
    m_raster.resize(static_cast<std::size_t>(step) * std::size_t(size.width()));
    for (int x = 0; x < size.width(); ++x) {
        for (int y = 0; y < size.height(); ++y) {
            lumi::test::writePixel(m_raster.data(), step, x, size.height() - 1 - y,
                                   patternPixel(x, y, depth), depth);
        }
    }
}

void TestPictureScrollView::show(int percent, QPoint origin)
{
    QVERIFY(m_window->showNow());
    QCOMPARE(m_view->viewport()->size(), kPlace.size());
    m_origin = origin;
    m_view->setRaster(&m_origin, m_raster.data(), m_photo, percent);
}

QString TestPictureScrollView::fault(int percent, QPoint origin) const
{
    const QImage shot = shotOf(m_view->viewport());
    const auto across = lumi::zoomPlacement(m_photo.width(), percent, origin.x(), kPlace.width());
    const auto down = lumi::zoomPlacement(m_photo.height(), percent, origin.y(), kPlace.height());
    const quint32 margin = m_depth == 16 ? 0x8410U : 0xFF808080U;
    for (int y = 0; y < shot.height(); ++y) {
        for (int x = 0; x < shot.width(); ++x) {
            const int i = x - across.margin;
            const int j = y - down.margin;
            const bool isInside = i >= 0 && i < across.shown && j >= 0 && j < down.shown;
            const quint32 wanted = isInside ? patternPixel(across.origin + i * 100 / percent,
                                                           down.origin + j * 100 / percent, m_depth)
                                            : margin;
            if (shownPixel(shot, x, y, m_depth) != wanted) {
                return QString::asprintf("(%d, %d)", x, y);
            }
        }
    }
    return {};
}

void TestPictureScrollView::drag(QPoint from, QPoint to)
{
    QTest::mousePress(m_view->viewport(), Qt::LeftButton, {}, from);
    QTest::mouseMove(m_view->viewport(), (from + to) / 2);
    QTest::mouseMove(m_view->viewport(), to);
    QTest::mouseRelease(m_view->viewport(), Qt::LeftButton, {}, to);
}

void TestPictureScrollView::drawsWhatItIsGiven_data()
{
    lumi::test::columns<int, QSize, int, QPoint, QPoint>();
    const QPoint kFarOut(900, 900);
    QTest::newRow("smaller than its place, 16 bits")
        << 16 << QSize(90, 71) << 100 << QPoint() << QPoint();
    QTest::newRow("larger, up to the end, 16 bits")
        << 16 << QSize(500, 400) << 100 << kFarOut << QPoint(200, 200);
    QTest::newRow("four times as large, 32 bits")
        << 32 << QSize(500, 400) << 400 << QPoint(31, 17) << QPoint(31, 17);
    QTest::newRow("wide, 32 bits")
        << 32 << QSize(900, 40) << 100 << QPoint(40, 50) << QPoint(40, 0);
}

void TestPictureScrollView::drawsWhatItIsGiven()
{
    const auto [depth, photo, percent, origin, drawn]
        = lumi::test::row<int, QSize, int, QPoint, QPoint>();
    makePhoto(photo, depth);
    show(percent, origin);
    QCOMPARE(m_origin, drawn);
    QCOMPARE(fault(percent, drawn), QString());
    // And once more at another percent.
    m_view->setPercent(200);
    QCOMPARE(fault(200, m_origin), QString());
}

void TestPictureScrollView::keysMoveThePicture_data()
{
    lumi::test::columns<int, QPoint>();
    QTest::newRow("Left shows what is left") << int(Qt::Key_Left) << QPoint(180, 200);
    QTest::newRow("Up shows what is above") << int(Qt::Key_Up) << QPoint(300, 80);
    QTest::newRow("Right shows what is right") << int(Qt::Key_Right) << QPoint(420, 200);
    QTest::newRow("Down shows what is below") << int(Qt::Key_Down) << QPoint(300, 320);
}

void TestPictureScrollView::keysMoveThePicture()
{
    const auto [key, origin] = lumi::test::row<int, QPoint>();
    makePhoto({900, 700});
    show(100, {300, 200});
    m_view->scrollKey(key);
    QCOMPARE(m_origin, origin);
    QCOMPARE(fault(100, origin), QString());
}

void TestPictureScrollView::keysAreNotAccepted()
{
    makePhoto({900, 700});
    show(100, {300, 200});
    for (const int key : {Qt::Key_Left, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_A}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        static_cast<QObject *>(m_view.data())->event(&event);
        QVERIFY(!event.isAccepted());
    }
    QCOMPARE(m_origin, QPoint(300, 200));
}

void TestPictureScrollView::thePictureFollowsThePen()
{
    makePhoto({900, 700});
    show(100, {300, 200});
    drag({100, 100}, {60, 130});
    QCOMPARE(m_origin, QPoint(340, 170));
    QCOMPARE(fault(100, {340, 170}), QString());
    // A new press starts from the present position.
    drag({10, 10}, {20, 10});
    QCOMPARE(m_origin, QPoint(330, 170));
}

void TestPictureScrollView::thePenMovesByPixelsOfTheRaster()
{
    makePhoto({900, 700});
    show(400, {300, 200});
    drag({100, 100}, {60, 130});
    QCOMPARE(m_origin, QPoint(340, 170));
    m_view->scrollKey(Qt::Key_Right);
    QCOMPARE(m_origin, QPoint(460, 170));
}

void TestPictureScrollView::movesStopAtTheEdges()
{
    makePhoto({900, 700});
    show(100, {60, 50});
    m_view->scrollKey(Qt::Key_Left);
    m_view->scrollKey(Qt::Key_Up);
    QCOMPARE(m_origin, QPoint(0, 0));
    for (int i = 0; i < 10; ++i) {
        m_view->scrollKey(Qt::Key_Right);
        m_view->scrollKey(Qt::Key_Down);
    }
    QCOMPARE(m_origin, QPoint(600, 500));
    QCOMPARE(fault(100, {600, 500}), QString());
    drag({290, 190}, {5, 5});
    QCOMPARE(m_origin, QPoint(600, 500));
    // The whole picture is visible, so it can't move.
    m_view->setPercent(20);
    m_view->scrollKey(Qt::Key_Right);
    QCOMPARE(m_origin, QPoint(0, 0));
}

void TestPictureScrollView::withoutARasterNothingIsDrawn()
{
    QVERIFY(m_window->showNow());
    m_view->redraw();
    m_view->setPercent(100);
    m_view->scrollKey(Qt::Key_Right);
    drag({100, 100}, {60, 130});
    QVERIFY(!FrameBuffer::instance().isAllocated());
    makePhoto({900, 700});
    show(100);
    m_view->setRaster(&m_origin, nullptr, QSize(), 0);
    // The drawn pixels stay until something else is drawn.
    QCOMPARE(fault(100, {}), QString());
}

void TestPictureScrollView::aHiddenViewDrawsNothing()
{
    makePhoto({900, 700});
    m_view->setRaster(&m_origin, m_raster.data(), m_photo, 100);
    QVERIFY(!FrameBuffer::instance().isAllocated());
    QVERIFY(m_window->showNow());
    m_view->redraw();
    QCOMPARE(fault(100, {}), QString());
    m_window->hide();
    m_view->redraw();
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestPictureScrollView::aMenuOverThePictureIsNotDrawnOver()
{
    makePhoto({900, 700});
    show(100);
    QMenu menu;
    menu.addAction(QStringLiteral("An entry of the menu"));
    menu.popup(m_view->viewport()->mapToGlobal(QPoint(50, 50)));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    const QImage before = shotOf(&menu);
    m_view->scrollKey(Qt::Key_Right);
    QCOMPARE(shotOf(&menu), before);
    QVERIFY(shownPixel(shotOf(m_view->viewport()), 5, 5, 32) == patternPixel(125, 5, 32));
    menu.hide();
    QCOMPARE(fault(100, {120, 0}), QString());
}

void TestPictureScrollView::nativeBarsAreOff()
{
    QCOMPARE(m_view->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(m_view->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(m_view->objectName(), QStringLiteral("ScrollView"));
}

LUMI_TEST(TestPictureScrollView)
#include "TestPictureScrollView.moc"
