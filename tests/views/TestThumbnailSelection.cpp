// SPDX-License-Identifier: MIT
// What taps do to the thumbnail view.
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/views/ViewFixture.h"
#include "views/FPVThumbnailLabel.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QTest>

using lumi::test::ViewFixture;

class TestThumbnailSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_view = std::make_unique<ViewFixture>(); }

    void cleanup() { m_view.reset(); }

    void aTapSelectsAndASecondOneOpens();
    void inSmallModeEveryTapIsOnThePicture();
    void aTapOnANameNeverOpens();
    void aFolderIsSelectedAtThePressAndOpenedAtTheRelease();
    void aVanishedFileIsNeitherSelectedNorOpened_data();
    void aVanishedFileIsNeitherSelectedNorOpened();
    void aFolderDeletedDuringTheTapIsNotOpened();
    void openingMayReplaceThePage();
    void theCellOfADeletedItemEmitsNothing();

private:
    void makeStore();

    std::unique_ptr<ViewFixture> m_view;
};

/// A folder "dir" and the photos a00 to a03, listed and shown.
void TestThumbnailSelection::makeStore()
{
    m_view->world.makePhotos(4);
    m_view->world.makePhotos(2, QStringLiteral("dir"));
    m_view->list();
    QVERIFY(m_view->waitForThumbnails());
}

void TestThumbnailSelection::aTapSelectsAndASecondOneOpens()
{
    makeStore();
    m_view->tap(2);
    QCOMPARE(m_view->news, QStringList{QStringLiteral("selected a01")});
    QCOMPARE(m_view->view.currentIndex(), 2);
    QCOMPARE(m_view->shownCursor(), 2);
    m_view->tap(3);
    QCOMPARE(m_view->shownCursor(), 3);
    m_view->news.clear();
    m_view->tap(3);
    QCOMPARE(m_view->news, QStringList{QStringLiteral("decided a02")});
    // A tap on the picture acts like a tap on the frame.
    m_view->news.clear();
    QTest::mouseClick(m_view->cellOf(3)->findChildren<FPVThumbnailLabel *>().first(),
                      Qt::LeftButton);
    QCOMPARE(m_view->news, QStringList{QStringLiteral("decided a02")});
}

void TestThumbnailSelection::inSmallModeEveryTapIsOnThePicture()
{
    makeStore();
    m_view->showSmall();
    m_view->view.showPage(0, -1, true);
    QVERIFY(m_view->waitForThumbnails());
    const FPVThumbnailItem *cell = m_view->cellOf(2);
    for (const QPoint place : {QPoint(3, 3), QPoint(cell->width() / 2, cell->height() - 5)}) {
        m_view->tap(3);
        m_view->news.clear();
        QTest::mouseClick(m_view->view.childAt(m_view->cellOf(2)->mapTo(&m_view->view, place)),
                          Qt::LeftButton);
        QTest::mouseClick(m_view->cellOf(2), Qt::LeftButton, {}, place);
        QCOMPARE(m_view->news,
                 (QStringList{QStringLiteral("selected a01"), QStringLiteral("decided a01")}));
    }
}

void TestThumbnailSelection::aTapOnANameNeverOpens()
{
    makeStore();
    QWidget *name = m_view->cellOf(2)->findChildren<FPVThumbnailLabel *>().last();
    for (int tap = 1; tap <= 3; ++tap) {
        QTest::mouseClick(name, Qt::LeftButton);
        QCOMPARE(m_view->news.size(), tap);
        QCOMPARE(m_view->news.last(), QStringLiteral("selected a01"));
        QCOMPARE(m_view->items.at(2)->isChecked(), tap % 2 == 1);
        QCOMPARE(m_view->shownCursor(), 2);
    }
}

void TestThumbnailSelection::aFolderIsSelectedAtThePressAndOpenedAtTheRelease()
{
    makeStore();
    QTest::mousePress(m_view->cellOf(0), Qt::LeftButton, {}, QPoint(60, 60));
    QCOMPARE(m_view->news, QStringList{QStringLiteral("selected dir")});
    QCOMPARE(m_view->shownCursor(), 0);
    QTest::mouseRelease(m_view->cellOf(0), Qt::LeftButton, {}, QPoint(60, 60));
    QCOMPARE(m_view->news.last(), QStringLiteral("decided dir"));
    QCOMPARE(m_view->news.size(), 2);
    // Selected again although it has the cursor.
    m_view->tap(0);
    QCOMPARE(m_view->news.size(), 4);
    QCOMPARE(m_view->news.at(2), QStringLiteral("selected dir"));
}

void TestThumbnailSelection::aVanishedFileIsNeitherSelectedNorOpened_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("a photo") << 2 << QStringLiteral("a01.jpg");
    QTest::newRow("a folder") << 0 << QStringLiteral("dir");
}

void TestThumbnailSelection::aVanishedFileIsNeitherSelectedNorOpened()
{
    const auto [index, name] = lumi::test::row<int, QString>();
    makeStore();
    m_view->tap(3);
    m_view->news.clear();
    const QString path = m_view->world.path(name);
    QVERIFY(QFile::remove(path) || QDir(path).removeRecursively());
    m_view->tap(index);
    QVERIFY(m_view->waitForThumbnails());
    QCOMPARE(m_view->items.count(), 4);
    // The reload selects the cell at the cursor's index. The tap itself did nothing.
    QCOMPARE(m_view->news, QStringList{QStringLiteral("selected a03")});
}

/// Deleted between press and release.
void TestThumbnailSelection::aFolderDeletedDuringTheTapIsNotOpened()
{
    makeStore();
    QTest::mousePress(m_view->cellOf(0), Qt::LeftButton, {}, QPoint(60, 60));
    QVERIFY(QDir(m_view->world.path(QStringLiteral("dir"))).removeRecursively());
    QTest::mouseRelease(m_view->cellOf(0), Qt::LeftButton, {}, QPoint(60, 60));
    QVERIFY(m_view->waitForThumbnails());
    QVERIFY(!m_view->news.contains(QStringLiteral("decided dir")));
    QCOMPARE(m_view->items.count(), 4);
}

void TestThumbnailSelection::openingMayReplaceThePage()
{
    makeStore();
    QPointer<FPVThumbnailItem> cell = m_view->cellOf(0);
    connect(&m_view->view, &FPVThumbnailView::decided, this, [this](const FPVItemObject *item) {
        m_view->view.reload(item->path());
        m_view->view.showPage(0, 0, true);
    });
    QTest::mouseClick(cell, Qt::LeftButton, {}, QPoint(60, 60));
    // The cell leaves the view at once and lives until its event has been handled.
    QVERIFY(m_view->cells().isEmpty());
    QVERIFY(m_view->waitForThumbnails());
    QVERIFY(cell.isNull());
    QCOMPARE(m_view->items.count(), 2);
    QCOMPARE(m_view->news.last(), QStringLiteral("selected a00"));
}

void TestThumbnailSelection::theCellOfADeletedItemEmitsNothing()
{
    makeStore();
    FPVThumbnailItem *cell = m_view->cellOf(2);
    FPVThumbnailItem *folder = m_view->cellOf(0);
    m_view->items.clear();
    QTest::mouseClick(cell, Qt::LeftButton, {}, QPoint(1, 1));
    QTest::mouseClick(folder, Qt::LeftButton, {}, QPoint(1, 1));
    m_view->view.itemselected(cell);
    m_view->view.folderdecided(folder);
    QVERIFY(m_view->news.isEmpty());
}

LUMI_TEST(TestThumbnailSelection)
#include "TestThumbnailSelection.moc"
