// SPDX-License-Identifier: MIT
#include "platform/QPEApplication.h"
#include "platform/toolkit/BackgroundWidget.h"
#include "tests/support/TestMain.h"
#include "tests/views/ViewFixture.h"

#include <QBoxLayout>
#include <QLabel>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTest>

using lumi::test::BrowserWorld;
using lumi::test::ViewFixture;

class TestFPVThumbnailView : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_view = std::make_unique<ViewFixture>(); }

    void cleanup() { m_view.reset(); }

    void startsWithoutCursorAndBars();
    void modesShowTheirBar();
    void framesAreOfACellsSize();
    void framesAreScaledOncePerLayout();
    void withoutColumnsNothingIsShown();
    void aWindowOfNoSizeIsNotLaidOut();
    void anotherSizeKeepsTheCells();
    void theSameSizeFillsThePageAgain();
    void namesHaveTheModesColour();
    void theContainerHasTheBackground();
    void focusGoesFromTheCellsToTheView();
    void theCursorIsDrawnWhileTheViewHasTheFocus();
    void withoutAListNothingHappens();
    void theWheelTurnsPages();
    void slotsAndSignalsHaveTheirNames();

private:
    std::unique_ptr<ViewFixture> m_view;
};

void TestFPVThumbnailView::startsWithoutCursorAndBars()
{
    FPVThumbnailView view(nullptr, nullptr);
    QCOMPARE(view.objectName(), QStringLiteral("ThumbnailView"));
    QCOMPARE(view.focusPolicy(), Qt::WheelFocus);
    QCOMPARE(view.viewport()->focusProxy(), &view);
    QCOMPARE(view.currentIndex(), -1);
    QCOMPARE(view.topIndex(), 0);
    QVERIFY(view.currentObject() == nullptr);
    QVERIFY(view.clipboardPaths().isEmpty());
    m_view->fill(3);
    QCOMPARE(m_view->view.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(m_view->view.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

void TestFPVThumbnailView::modesShowTheirBar()
{
    m_view->fill(20);
    QVERIFY(m_view->vBar->isVisible());
    QVERIFY(!m_view->hBar->isVisible());
    QTRY_COMPARE(m_view->vBar->geometry().right(), m_view->view.width() - 1);
    QTRY_COMPARE(m_view->vBar->height(), m_view->view.height());
    m_view->showInfo();
    QVERIFY(!m_view->vBar->isVisible());
    QVERIFY(m_view->hBar->isVisible());
    QTRY_COMPARE(m_view->hBar->geometry().bottom(), m_view->view.height() - 1);
    QTRY_COMPARE(m_view->hBar->width(), m_view->view.width());
    // The page leaves room for the bar.
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->cells().first()->height(), 109 - m_view->hBar->height());
}

void TestFPVThumbnailView::framesAreOfACellsSize()
{
    FPVThumbnailMetrics metrics('l', 3, 2);
    QCOMPARE(metrics.imageSize, QSize(-1, -1));
    QCOMPARE(metrics.pitch, QSize(-1, -1));
    QCOMPARE(metrics.visibleCount, 6);
    metrics.showName = true;
    metrics.layOut(QSize(14, 0));
    for (const QImage &frame : metrics.frames) {
        QCOMPARE(frame.size(), QSize(175, 157));
    }
    QCOMPARE(metrics.checkOff.size(), QSize(24, 24));
    QCOMPARE(metrics.checkOn.toImage().pixelColor(5, 5), QColor(Qt::red));
    FPVThumbnailMetrics small('s', 7, 5);
    small.layOut(QSize(14, 0));
    QCOMPARE(small.frame(FPVThumbnailMetrics::Back, true).pixelColor(3, 3),
             BrowserWorld::frameColour(QStringLiteral("frame_folder_s_back_on")));
    QCOMPARE(small.checkOff.size(), QSize(16, 16));
}

void TestFPVThumbnailView::framesAreScaledOncePerLayout()
{
    FPVThumbnailMetrics metrics('s', 7, 5);
    metrics.layOut(QSize(14, 0));
    const QImage before = metrics.frame(FPVThumbnailMetrics::Picture, false);
    metrics.layOut(QSize(14, 0));
    QCOMPARE(metrics.frame(FPVThumbnailMetrics::Picture, false).constBits(), before.constBits());
}

void TestFPVThumbnailView::withoutColumnsNothingIsShown()
{
    m_view->items.append(new lumi::test::NotingImage(m_view->world.store));
    m_view->view.showPage(0, 0, true);
    QTest::qWait(60);
    QVERIFY(m_view->container() == nullptr);
    m_view->view.setMetrics(FPVThumbnailMetrics('l', 0, 2), true);
    QTest::qWait(60);
    QVERIFY(m_view->cells().isEmpty());
    m_view->view.action(3);
    QVERIFY(m_view->news.isEmpty());
}

void TestFPVThumbnailView::aWindowOfNoSizeIsNotLaidOut()
{
    FPVItemList items;
    FPVThumbnailView view(nullptr, &items);
    view.setMinimumSize(0, 0);
    items.append(new lumi::test::NotingImage(m_view->world.store));
    view.resize(4, 300);
    view.setMetrics(FPVThumbnailMetrics('l', 3, 2), true);
    QTest::qWait(60);
    QVERIFY(view.findChildren<FPVThumbnailItem *>().isEmpty());
    view.resize(5, 300);
    view.setMetrics(FPVThumbnailMetrics('l', 3, 2), true);
    QTRY_COMPARE(view.findChildren<FPVThumbnailItem *>().size(), 1);
}

void TestFPVThumbnailView::anotherSizeKeepsTheCells()
{
    m_view->fill(3);
    QVERIFY(m_view->waitForPage());
    const QList<FPVThumbnailItem *> before = m_view->cells();
    m_view->view.resize(600, 400);
    QTest::qWait(60);
    QCOMPARE(m_view->cells(), before);
    QCOMPARE(m_view->container()->size(), QSize(600, 400));
}

void TestFPVThumbnailView::theSameSizeFillsThePageAgain()
{
    m_view->fill(20);
    m_view->view.showPage(9, -1, true);
    QVERIFY(m_view->waitForPage());
    const QWidget *before = m_view->container();
    const QSize size = m_view->view.size();
    QResizeEvent event(size, size);
    QCoreApplication::sendEvent(m_view->view.viewport(), &event);
    QVERIFY(m_view->container() != before);
    QVERIFY(m_view->cells().isEmpty());
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->indexes(), (QList<int>{9, 10, 11, 12, 13, 14}));
    m_view->view.setVerticalMode(true);
    QVERIFY(m_view->cells().isEmpty());
    QVERIFY(m_view->waitForPage());
}

void TestFPVThumbnailView::namesHaveTheModesColour()
{
    m_view->fill(2);
    m_view->view.showPage(0, 1, true);
    QVERIFY(m_view->waitForPage());
    const auto colour = [this](int index) {
        const FPVThumbnailItem *cell = m_view->cellOf(index);
        const QRect name = cell->findChildren<QLabel *>().last()->geometry();
        return m_view->view.grab().toImage().pixelColor(cell->pos() + name.bottomRight());
    };
    QCOMPARE(colour(0), QColor(0xAC, 0xAC, 0xAC));
    QCOMPARE(colour(1), QColor(0xE8, 0x94, 0x5A));
}

void TestFPVThumbnailView::theContainerHasTheBackground()
{
    QPixmap background(8, 8);
    background.fill(Qt::cyan);
    m_view->view.setBackground(background);
    m_view->fill(1);
    QVERIFY(m_view->waitForPage());
    const QPoint free(300, 250);
    QCOMPARE(m_view->container()->grab().toImage().pixelColor(free), QColor(Qt::cyan));
    // An existing page gets it too.
    background.fill(Qt::magenta);
    m_view->view.setBackground(background);
    QCOMPARE(m_view->container()->grab().toImage().pixelColor(free), QColor(Qt::magenta));
    // A null pixmap takes effect with the next page.
    m_view->view.setBackground(QPixmap());
    QCOMPARE(m_view->container()->grab().toImage().pixelColor(free), QColor(Qt::magenta));
    m_view->view.showPage(0, -1, true);
    QVERIFY(m_view->waitForPage());
    QVERIFY(m_view->container()->grab().toImage().pixelColor(free) != QColor(Qt::magenta));
}

void TestFPVThumbnailView::focusGoesFromTheCellsToTheView()
{
    m_view->fill(1);
    QVERIFY(m_view->waitForPage());
    FPVThumbnailItem *cell = m_view->cells().first();
    QVERIFY(cell->hasFocus());
    QVERIFY(cell->findChild<QLabel *>()->hasFocus());
    m_view->view.clearFocus();
    QVERIFY(!cell->hasFocus());
    cell->setFocus();
    QVERIFY(m_view->view.hasFocus());
}

void TestFPVThumbnailView::theCursorIsDrawnWhileTheViewHasTheFocus()
{
    m_view->fill(4);
    m_view->view.showPage(0, 2, true);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->shownCursor(), 2);
    m_view->view.clearFocus();
    QCOMPARE(m_view->shownCursor(), -1);
    m_view->view.setFocus();
    QCOMPARE(m_view->shownCursor(), 2);
}

void TestFPVThumbnailView::withoutAListNothingHappens()
{
    m_view->view.setList(nullptr);
    m_view->showLarge();
    m_view->view.reload(m_view->world.store);
    m_view->view.action(6);
    m_view->view.action(5);
    m_view->key(Qt::Key_Backspace);
    m_view->view.setCurrentObject(nullptr);
    m_view->view.setCurrentObjectQuiet(nullptr);
    m_view->view.dropCursorThumbnail();
    QTest::qWait(60);
    QVERIFY(m_view->view.nextPicture() == nullptr);
    QVERIFY(m_view->view.prevPicture() == nullptr);
    QVERIFY(!m_view->view.anyChecked());
    QVERIFY(m_view->news.isEmpty());
}

void TestFPVThumbnailView::theWheelTurnsPages()
{
    m_view->fill(60);
    QVERIFY(m_view->waitForPage());
    QWheelEvent event(QPointF(100, 100), m_view->view.mapToGlobal(QPointF(100, 100)), QPoint(),
                      QPoint(0, -120), Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_view->view.viewport(), &event);
    QVERIFY(m_view->view.topIndex() > 0);
    QCOMPARE(m_view->view.topIndex(), 3 * (m_view->vBar->value() - 1));
}

void TestFPVThumbnailView::slotsAndSignalsHaveTheirNames()
{
    const QMetaObject &view = FPVThumbnailView::staticMetaObject;
    const char *const methods[] = {"selected(FPVItemObject*)",
                                   "decided(FPVItemObject*)",
                                   "itemselected(FPVThumbnailItem*)",
                                   "folderselected(FPVThumbnailItem*)",
                                   "folderdecided(FPVThumbnailItem*)",
                                   "itemLoadTime()",
                                   "vScroll_update()",
                                   "vScroll_update_nextPage()",
                                   "vScroll_update_prevPage()",
                                   "vScroll_update_nextLine()",
                                   "vScroll_update_prevLine()",
                                   "hScroll_update()",
                                   "hScroll_update_nextPage()",
                                   "hScroll_update_prevPage()",
                                   "hScroll_update_nextLine()",
                                   "hScroll_update_prevLine()"};
    int method = view.methodOffset();
    for (const char *name : methods) {
        QCOMPARE(view.method(method).methodSignature(), QByteArray(name));
        QCOMPARE(view.method(method).methodType(),
                 method < view.methodOffset() + 2 ? QMetaMethod::Signal : QMetaMethod::Slot);
        ++method;
    }
    QCOMPARE(method, view.methodCount());
}

LUMI_TEST(TestFPVThumbnailView)
#include "TestFPVThumbnailView.moc"
