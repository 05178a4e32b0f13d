// SPDX-License-Identifier: MIT
// How pages are built: stages, cells, and changes during the building.
#include "platform/QPEApplication.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/views/ViewFixture.h"
#include "views/FPVThumbnailLabel.h"

#include <QAbstractButton>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

using lumi::test::ViewFixture;

class TestThumbnailPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_view = std::make_unique<ViewFixture>(); }

    void cleanup() { m_view.reset(); }

    void thePageIsFilledAfter30Ms();
    void cellsComeBeforeTheirThumbnails();
    void thumbnailsComeOneByOne();
    void cellsStandInTheirGrid();
    void partsFollowTheMode();
    void anEmptyFolderShowsItsBackground();
    void twentyItemsEndOnAFullPage();
    void aListOfOnePageHasNoBarRange();
    void sidewaysTheLastPageStaysShort();
    void everyModeBuildsAtMostItsPage_data();
    void everyModeBuildsAtMostItsPage();
    void offPageItemsAreNotAsked();
    void severalChangesBuildThePageOnce();
    void aNewPageEndsTheOldOne();
    void aPageChangeInASignalStopsTheBuilder();
    void aListThatShrinksInASignalStopsTheBuilder();
    void theCursorIsFoundAgain();
    void anIndexOffThePageIsNoCursor();
    void reloadShowsTheFolderFromItsTop();
    void reloadWithoutAListDoesNothing();
    void aStaleCursorTakesTheSameIndexAfterAReload();
    void aFileThatVanishedBeforeThePageReloadsTheFolder();
    void aFolderThatVanishedEndsInOneReload();
    void eachFolderIsReloadedForItsOwnMissingFile();
    void aBadPhotoStaysBlackAndTheChainGoesOn();
    void droppingTheCursorStopsThePage();
    void droppingWithoutACursorStopsThePage();

private:
    std::unique_ptr<ViewFixture> m_view;
};

void TestThumbnailPages::thePageIsFilledAfter30Ms()
{
    QElapsedTimer clock;
    clock.start();
    m_view->fill(3);
    QVERIFY(m_view->waitForPage());
    QVERIFY(clock.elapsed() >= 28); // timers may be a twentieth early
}

void TestThumbnailPages::cellsComeBeforeTheirThumbnails()
{
    m_view->fill(3);
    QVERIFY(m_view->container() != nullptr);
    QVERIFY(!m_view->container()->isVisible());
    QVERIFY(m_view->cells().isEmpty());
    m_view->view.itemLoadTime();
    QCOMPARE(m_view->indexes(), (QList<int>{0, 1, 2}));
    QVERIFY(m_view->container()->isVisible());
    for (FPVThumbnailItem *cell : m_view->cells()) {
        QVERIFY(cell->isVisible());
        QCOMPARE(cell->item()->thumbnailItem(), cell);
        QVERIFY(m_view->noting(cell->index())->asked.isEmpty());
        QCOMPARE(cell->findChildren<FPVThumbnailLabel *>().size(), 2);
    }
    QVERIFY(m_view->waitForThumbnails());
}

void TestThumbnailPages::thumbnailsComeOneByOne()
{
    m_view->fill(6);
    QVERIFY(m_view->waitForPage());
    QVERIFY(m_view->waitForThumbnails());
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(m_view->noting(i)->asked.size(), 1);
        QCOMPARE(m_view->noting(i)->asked.first().height(), 119);
        // Timers may be 5 percent early.
        QVERIFY(i == 0 || m_view->noting(i)->askedAt - m_view->noting(i - 1)->askedAt >= 9);
    }
}

void TestThumbnailPages::cellsStandInTheirGrid()
{
    m_view->fill(6);
    QVERIFY(m_view->waitForPage());
    const QSize pitch((541 - m_view->vBar->width()) / 3, 157);
    for (const FPVThumbnailItem *cell : m_view->cells()) {
        const int i = cell->index();
        QCOMPARE(cell->geometry(),
                 QRect(QPoint(pitch.width() * (i % 3), pitch.height() * (i / 3)), pitch));
    }
    // Nothing of the page lies below the bar.
    QVERIFY(m_view->cells().at(2)->geometry().right() < m_view->vBar->x());
}

void TestThumbnailPages::partsFollowTheMode()
{
    m_view->fill(2);
    m_view->showSmall();
    QVERIFY(m_view->waitForThumbnails());
    const FPVThumbnailItem *small = m_view->cells().first();
    QCOMPARE(small->findChildren<FPVThumbnailLabel *>().size(), 1);
    QVERIFY(small->findChild<QAbstractButton *>()->isVisible());
    QCOMPARE(m_view->noting(0)->thumbnailKind(), 's');
    m_view->showInfo();
    QVERIFY(m_view->waitForThumbnails());
    const FPVThumbnailItem *info = m_view->cells().first();
    QCOMPARE(info->findChildren<FPVThumbnailLabel *>().size(), 1);
    QVERIFY(info->findChild<QAbstractButton *>() == nullptr);
    QCOMPARE(m_view->noting(0)->thumbnailKind(), 'd');
}

void TestThumbnailPages::anEmptyFolderShowsItsBackground()
{
    m_view->fill(20);
    m_view->view.showPage(15, -1, true);
    QVERIFY(m_view->waitForPage());
    m_view->items.clear();
    QPixmap background(4, 4);
    background.fill(Qt::magenta);
    m_view->view.setBackground(background);
    m_view->view.showPage(0, 0, true);
    QCOMPARE(m_view->container()->grab().toImage().pixelColor(100, 100), QColor(Qt::magenta));
    QCOMPARE(m_view->vBar->minimum(), 0);
    QCOMPARE(m_view->vBar->maximum(), 0);
    QCOMPARE(m_view->vBar->value(), 0);
    QCOMPARE(m_view->view.topIndex(), 0);
    QVERIFY(m_view->container()->isVisible());
    QCOMPARE(m_view->container()->size(), QPEApplication::desktopSize());
    m_view->view.itemLoadTime();
    QVERIFY(m_view->cells().isEmpty());
    QVERIFY(m_view->view.currentObject() == nullptr);
}

void TestThumbnailPages::twentyItemsEndOnAFullPage()
{
    m_view->fill(20);
    QCOMPARE(m_view->vBar->minimum(), 1);
    QCOMPARE(m_view->vBar->maximum(), 6);
    QCOMPARE(m_view->vBar->pageStep(), 2);
    QCOMPARE(m_view->vBar->singleStep(), 1);
    QCOMPARE(m_view->vBar->value(), 1);
    m_view->view.showPage(18, -1, true);
    QCOMPARE(m_view->view.topIndex(), 15);
    QCOMPARE(m_view->vBar->value(), 6);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->indexes(), (QList<int>{15, 16, 17, 18, 19}));
}

void TestThumbnailPages::aListOfOnePageHasNoBarRange()
{
    m_view->fill(6);
    m_view->view.showPage(3, -1, true);
    QCOMPARE(m_view->vBar->minimum(), 0);
    QCOMPARE(m_view->vBar->maximum(), 0);
    QCOMPARE(m_view->view.topIndex(), 0);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->cells().size(), 6);
}

void TestThumbnailPages::sidewaysTheLastPageStaysShort()
{
    m_view->fill(10);
    m_view->showInfo();
    QCOMPARE(m_view->hBar->minimum(), 1);
    QCOMPARE(m_view->hBar->maximum(), 2);
    QCOMPARE(m_view->hBar->pageStep(), 1);
    m_view->view.showPage(7, -1, true);
    QCOMPARE(m_view->view.topIndex(), 7);
    QCOMPARE(m_view->hBar->value(), 2);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->indexes(), (QList<int>{7, 8, 9}));
}

void TestThumbnailPages::everyModeBuildsAtMostItsPage_data()
{
    lumi::test::columns<char, int>();
    QTest::newRow("large") << 'l' << 6;
    QTest::newRow("small") << 's' << 35;
    QTest::newRow("info") << 'd' << 7;
}

void TestThumbnailPages::everyModeBuildsAtMostItsPage()
{
    const auto [kind, cells] = lumi::test::row<char, int>();
    m_view->fill(200);
    if (kind == 's') {
        m_view->showSmall();
    } else if (kind == 'd') {
        m_view->showInfo();
    }
    m_view->view.showPage(-1, 100, true);
    QVERIFY(m_view->waitForThumbnails());
    QCOMPARE(static_cast<int>(m_view->cells().size()), cells);
    m_view->view.showPage(0, -1, true);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(static_cast<int>(m_view->cells().size()), cells);
}

void TestThumbnailPages::offPageItemsAreNotAsked()
{
    m_view->fill(600);
    QVERIFY(m_view->waitForPage());
    m_view->view.showPage(300, -1, true);
    QVERIFY(m_view->waitForThumbnails());
    m_view->key(Qt::Key_Right);
    m_view->view.vScroll_update_nextPage();
    QVERIFY(m_view->waitForPage());
    int asked = 0;
    for (int i = 0; i < m_view->items.count(); ++i) {
        asked += m_view->noting(i)->pathCalls > 0 ? 1 : 0;
    }
    QCOMPARE(asked, 3 * 6);
}

void TestThumbnailPages::severalChangesBuildThePageOnce()
{
    m_view->fill(60);
    m_view->view.showPage(0, 1, true);
    m_view->view.showPage(3, 4, true);
    m_view->view.showPage(6, 8, true);
    QVERIFY(m_view->waitForPage());
    QTest::qWait(80);
    QCOMPARE(m_view->indexes(), (QList<int>{6, 7, 8, 9, 10, 11}));
    QCOMPARE(m_view->news.size(), 1);
    QVERIFY(m_view->noting(1)->asked.isEmpty());
}

void TestThumbnailPages::aNewPageEndsTheOldOne()
{
    m_view->fill(60);
    m_view->view.itemLoadTime();
    m_view->cellOf(0)->viewthumbnail();
    m_view->view.showPage(30, -1, true);
    QVERIFY(m_view->cells().isEmpty());
    QVERIFY(m_view->noting(0)->thumbnailItem() == nullptr);
    QVERIFY(m_view->waitForThumbnails());
    QVERIFY(m_view->noting(1)->asked.isEmpty());
    QVERIFY(m_view->noting(5)->asked.isEmpty());
    QCOMPARE(m_view->noting(35)->asked.size(), 1);
}

void TestThumbnailPages::aPageChangeInASignalStopsTheBuilder()
{
    m_view->fill(60);
    m_view->view.showPage(0, 2, true);
    bool turned = false;
    connect(&m_view->view, &FPVThumbnailView::selected, this, [this, &turned] {
        if (!turned) {
            turned = true;
            m_view->view.showPage(30, -1, true);
        }
    });
    m_view->view.itemLoadTime();
    QVERIFY(turned);
    QVERIFY(m_view->cells().isEmpty());
    QVERIFY(m_view->waitForThumbnails());
    QCOMPARE(m_view->indexes(), (QList<int>{30, 31, 32, 33, 34, 35}));
    QVERIFY(m_view->noting(0)->asked.isEmpty());
}

void TestThumbnailPages::aListThatShrinksInASignalStopsTheBuilder()
{
    m_view->fill(6);
    m_view->view.showPage(0, 1, true);
    connect(&m_view->view, &FPVThumbnailView::selected, this, [this] {
        m_view->items.clear();
        m_view->view.showPage(0, 0, true);
    });
    m_view->view.itemLoadTime();
    m_view->view.itemLoadTime();
    QVERIFY(m_view->cells().isEmpty());
}

void TestThumbnailPages::theCursorIsFoundAgain()
{
    m_view->fill(20);
    m_view->view.showPage(0, 4, true);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->shownCursor(), 4);
    QCOMPARE(m_view->news.size(), 1);
    m_view->view.showPage(15, -1, true);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->shownCursor(), -1);
    QCOMPARE(m_view->view.currentIndex(), 4);
    QCOMPARE(m_view->news.size(), 1);
    m_view->view.showPage(3, -1, true);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->shownCursor(), 4);
    QCOMPARE(m_view->news.size(), 2);
}

void TestThumbnailPages::anIndexOffThePageIsNoCursor()
{
    m_view->fill(20);
    m_view->view.showPage(0, 6, true);
    QCOMPARE(m_view->view.currentIndex(), -1);
    m_view->view.showPage(3, 2, true);
    QCOMPARE(m_view->view.currentIndex(), -1);
    m_view->view.showPage(3, 3, true);
    QCOMPARE(m_view->view.currentIndex(), 3);
}

void TestThumbnailPages::reloadShowsTheFolderFromItsTop()
{
    m_view->world.makePhotos(8);
    m_view->list();
    m_view->view.showPage(-1, 7, true);
    QCOMPARE(m_view->view.topIndex(), 3);
    m_view->world.makePhotos(9, QStringLiteral("sub"));
    m_view->view.reload(m_view->world.path(QStringLiteral("sub")));
    QCOMPARE(m_view->items.count(), 9);
    QCOMPARE(m_view->items.currentPath(), m_view->world.path(QStringLiteral("sub")));
    QCOMPARE(m_view->items.rootPath(), m_view->world.store);
    QCOMPARE(m_view->view.topIndex(), 0);
}

void TestThumbnailPages::reloadWithoutAListDoesNothing()
{
    m_view->fill(3);
    QVERIFY(m_view->waitForPage());
    m_view->view.reload(QString());
    QCOMPARE(m_view->items.count(), 3);
    QCOMPARE(m_view->cells().size(), 3);
}

void TestThumbnailPages::aStaleCursorTakesTheSameIndexAfterAReload()
{
    m_view->world.makePhotos(5);
    m_view->list();
    m_view->view.showPage(0, 4, true);
    m_view->view.reload(m_view->world.store);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->view.currentIndex(), 4);
    QCOMPARE(m_view->shownCursor(), 4);
    QFile::remove(m_view->world.path(QStringLiteral("a04.jpg")));
    m_view->view.reload(m_view->world.store);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->view.currentIndex(), 4);
    QVERIFY(m_view->view.currentObject() == nullptr);
    QCOMPARE(m_view->shownCursor(), -1);
}

void TestThumbnailPages::aFileThatVanishedBeforeThePageReloadsTheFolder()
{
    m_view->world.makePhotos(4);
    m_view->list();
    QFile::remove(m_view->world.path(QStringLiteral("a02.jpg")));
    QVERIFY(m_view->waitForThumbnails());
    QCOMPARE(m_view->items.count(), 3);
    QCOMPARE(m_view->indexes(), (QList<int>{0, 1, 2}));
    QCOMPARE(m_view->items.at(2)->baseName(), QStringLiteral("a03"));
    QVERIFY(m_view->news.isEmpty());
}

void TestThumbnailPages::aFolderThatVanishedEndsInOneReload()
{
    m_view->world.makePhotos(4, QStringLiteral("sub"));
    m_view->list(QStringLiteral("sub"));
    QVERIFY(m_view->waitForThumbnails());
    QDir(m_view->world.path(QStringLiteral("sub"))).removeRecursively();
    m_view->view.showPage(0, -1, true);
    QTest::qWait(150);
    // The page stays, with the known items.
    const QWidget *page = m_view->container();
    QTest::qWait(150);
    QCOMPARE(m_view->container(), page);
    QCOMPARE(m_view->cells().size(), 4);
}

/// A reload for a missing file in one folder must not prevent a reload in the next folder.
void TestThumbnailPages::eachFolderIsReloadedForItsOwnMissingFile()
{
    m_view->world.makePhotos(1, QStringLiteral("one"));
    m_view->world.makePhotos(3, QStringLiteral("two"));
    m_view->list(QStringLiteral("one"));
    QVERIFY(m_view->waitForPage());
    QVERIFY(QFile::remove(m_view->world.path(QStringLiteral("one/a00.jpg"))));
    m_view->view.showPage(0, -1, true);
    QTRY_COMPARE(m_view->items.count(), 0);
    m_view->view.reload(m_view->world.path(QStringLiteral("two")));
    QVERIFY(QFile::remove(m_view->world.path(QStringLiteral("two/a01.jpg"))));
    QTRY_COMPARE(m_view->items.count(), 2);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->cells().size(), 2);
}

void TestThumbnailPages::aBadPhotoStaysBlackAndTheChainGoesOn()
{
    m_view->world.makePhoto(QStringLiteral("a.jpg"));
    m_view->world.makeFile(QStringLiteral("b.jpg"), "this is no photo");
    m_view->world.makePhoto(QStringLiteral("c.jpg"), QSize(80, 60), Qt::red);
    QTest::ignoreMessage(QtWarningMsg, "FPVItemJpeg Error (3)");
    m_view->list();
    QVERIFY(m_view->waitForPage());
    const auto pixel = [this](int index) {
        const QImage image = m_view->cellOf(index)->grab().toImage();
        return image.pixelColor(image.width() / 2, 50);
    };
    QCOMPARE(pixel(1), QColor(Qt::black));
    QTRY_VERIFY(pixel(2).red() > 200);
    QCOMPARE(pixel(1), QColor(Qt::black));
}

void TestThumbnailPages::droppingTheCursorStopsThePage()
{
    m_view->fill(6);
    m_view->view.showPage(0, 1, true);
    m_view->view.itemLoadTime();
    // The chain has reached the second cell.
    m_view->cellOf(0)->viewthumbnail();
    QPointer<FPVThumbnailItem> cell = m_view->cellOf(1);
    m_view->view.dropCursorThumbnail();
    QVERIFY(m_view->noting(1)->thumbnailItem() == nullptr);
    QVERIFY(!cell->isVisible());
    QTest::qWait(100);
    QVERIFY(cell.isNull());
    QVERIFY(m_view->noting(1)->asked.isEmpty());
    QVERIFY(m_view->noting(2)->asked.isEmpty());
    QCOMPARE(m_view->view.currentIndex(), 1);
    m_view->view.showPage(-1, m_view->view.currentIndex(), true);
    QVERIFY(m_view->waitForThumbnails());
    QCOMPARE(m_view->cells().size(), 6);
    QCOMPARE(m_view->shownCursor(), 1);
}

void TestThumbnailPages::droppingWithoutACursorStopsThePage()
{
    m_view->fill(6);
    m_view->view.dropCursorThumbnail();
    QTest::qWait(80);
    QVERIFY(m_view->cells().isEmpty());
}

LUMI_TEST(TestThumbnailPages)
#include "TestThumbnailPages.moc"
