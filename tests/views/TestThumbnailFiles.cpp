// SPDX-License-Identifier: MIT
// Making, renaming and deleting files, and the page afterwards.
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "tests/support/rows.h"
#include "tests/views/ViewFixture.h"

#include <QDir>
#include <QFile>
#include <QTest>

using lumi::PasteResult;
using lumi::test::list;
using lumi::test::ViewFixture;

namespace {

/// Removes write permission, so that it cannot be deleted.
void protect(const QString &path)
{
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
}

} // namespace

class TestThumbnailFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_view = std::make_unique<ViewFixture>(); }

    void cleanup() { m_view.reset(); }

    void withoutAFolderNothingIsDone();
    void foldersAreMadeInTheListedFolder();
    void itemsAreRenamedWithoutAReload();
    void theCurrentPhotoIsDeleted();
    void onlyPhotosAreDeleted();
    void aPhotoThatCannotBeDeletedKeepsItsItem();
    void theLastPhotoLeavesAnEmptyPage();
    void thePageMovesBackWhenItRunsEmpty_data();
    void thePageMovesBackWhenItRunsEmpty();
    void checkedPhotosAreDeleted_data();
    void checkedPhotosAreDeleted();
    void aMarkedFolderOnlyLosesItsMark();
    void deletingMarkedPhotosShowsTheFirstPage();
    void deletingNothingLeavesThePage();
    void emptySubfoldersAreDeleted();

private:
    std::unique_ptr<ViewFixture> m_view;
};

void TestThumbnailFiles::withoutAFolderNothingIsDone()
{
    FPVThumbnailView view(nullptr, nullptr);
    for (int round = 0; round < 2; ++round) {
        QVERIFY(!view.hasFolder());
        QVERIFY(!view.hasEntry(QStringLiteral(".")));
        QVERIFY(!view.makeFolder(QStringLiteral("trip")));
        QVERIFY(!view.renameItem(QStringLiteral("a"), QStringLiteral("b")));
        QVERIFY(!view.deleteCurrent());
        QVERIFY(!view.deleteChecked());
        QVERIFY(!view.deleteEmptyFolders());
        view.copyCurrent();
        view.cutCurrent();
        view.copyChecked();
        view.cutChecked();
        view.checkAll();
        view.uncheckAll();
        QVERIFY(view.clipboardPaths().isEmpty());
        view.clipboard().take({m_view->world.makePhoto(QStringLiteral("a.jpg"))}, true);
        QCOMPARE(view.paste(), PasteResult::Missing);
        QCOMPARE(view.clipboardPaths().size(), 1);
        view.clipboard().take({}, false);
        // A list that was never loaded is no folder either.
        static FPVItemList none;
        view.setList(&none);
    }
}

void TestThumbnailFiles::foldersAreMadeInTheListedFolder()
{
    m_view->world.makePhoto(QStringLiteral("dir/a.jpg"));
    m_view->list(QStringLiteral("dir"));
    QVERIFY(m_view->view.hasFolder());
    QVERIFY(m_view->view.hasEntry(QStringLiteral("a.jpg")));
    QVERIFY(!m_view->view.hasEntry(QStringLiteral("dir")));
    QVERIFY(m_view->view.makeFolder(QStringLiteral("day one")));
    QVERIFY(m_view->exists("dir/day one"));
    QVERIFY(!m_view->view.makeFolder(QStringLiteral("day one")));
    QVERIFY(!m_view->view.makeFolder(QStringLiteral("day/two")));
    QCOMPARE(m_view->names(), list("a.jpg"));
}

void TestThumbnailFiles::itemsAreRenamedWithoutAReload()
{
    m_view->world.makePhoto(QStringLiteral("a.jpg"));
    m_view->world.makePhoto(QStringLiteral("b.jpg"));
    m_view->list();
    QVERIFY(m_view->view.renameItem(QStringLiteral("a.jpg"), QStringLiteral("c.jpg")));
    QVERIFY(m_view->exists("c.jpg") && !m_view->exists("a.jpg"));
    QVERIFY(!m_view->view.renameItem(QStringLiteral("b.jpg"), QStringLiteral("c.jpg")));
    QVERIFY(!m_view->view.renameItem(QStringLiteral("gone"), QStringLiteral("d")));
    QCOMPARE(m_view->names(), list("a.jpg b.jpg"));
}

void TestThumbnailFiles::theCurrentPhotoIsDeleted()
{
    m_view->world.makePhotos(3);
    m_view->list();
    m_view->view.showPage(0, 1, true);
    QVERIFY(m_view->waitForThumbnails());
    QVERIFY(m_view->view.deleteCurrent());
    QVERIFY(!m_view->exists("a01.jpg"));
    QCOMPARE(m_view->names(), list("a00.jpg a02.jpg"));
    QVERIFY(m_view->waitForThumbnails());
    QCOMPARE(m_view->indexes(), (QList<int>{0, 1}));
    // The cursor stays at its place.
    QCOMPARE(m_view->view.currentObject()->fileName(), QStringLiteral("a02.jpg"));
}

void TestThumbnailFiles::onlyPhotosAreDeleted()
{
    m_view->world.makeFolder(QStringLiteral("empty"));
    m_view->world.makePhotos(1);
    m_view->list();
    QVERIFY(!m_view->view.deleteCurrent());
    m_view->view.showPage(0, 0, true);
    QVERIFY(!m_view->view.deleteCurrent());
    QVERIFY(m_view->exists("empty"));
    QCOMPARE(m_view->items.count(), 2);
}

void TestThumbnailFiles::aPhotoThatCannotBeDeletedKeepsItsItem()
{
    m_view->world.makePhotos(2);
    protect(m_view->world.path(QStringLiteral("a00.jpg")));
    m_view->list();
    m_view->view.showPage(0, 0, true);
    QVERIFY(!m_view->view.deleteCurrent());
    QVERIFY(m_view->exists("a00.jpg"));
    QCOMPARE(m_view->items.count(), 2);
}

void TestThumbnailFiles::theLastPhotoLeavesAnEmptyPage()
{
    m_view->world.makePhotos(1);
    m_view->list();
    m_view->view.showPage(0, 0, true);
    QVERIFY(m_view->waitForThumbnails());
    QVERIFY(m_view->view.deleteCurrent());
    QCOMPARE(m_view->items.count(), 0);
    QVERIFY(m_view->cells().isEmpty());
    QVERIFY(m_view->view.currentObject() == nullptr);
    QVERIFY(!m_view->view.deleteCurrent());
}

void TestThumbnailFiles::thePageMovesBackWhenItRunsEmpty_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("fewer than a page are left") << 5 << 0;
    // One page back from the end is in the middle of the first one.
    QTest::newRow("a page and a half are left") << 11 << 0;
    QTest::newRow("two pages and more are left") << 16 << 7;
}

void TestThumbnailFiles::thePageMovesBackWhenItRunsEmpty()
{
    const auto [count, top] = lumi::test::row<int, int>();
    m_view->world.makePhotos(count);
    m_view->list();
    // Sideways a page may begin with the last photo.
    m_view->showInfo();
    m_view->view.showPage(0, 0, true);
    m_view->view.setCurrentObjectQuiet(m_view->items.at(count - 1));
    QCOMPARE(m_view->view.topIndex(), count - 1);
    QVERIFY(m_view->view.deleteCurrent());
    QCOMPARE(m_view->items.count(), count - 1);
    QCOMPARE(m_view->view.topIndex(), top);
}

void TestThumbnailFiles::checkedPhotosAreDeleted_data()
{
    lumi::test::columns<QString, QString, QStringList, bool>();
    QTest::newRow("nothing is marked") << ""
                                       << "" << list("a00.jpg a01.jpg a02.jpg") << false;
    QTest::newRow("neighbours") << "a00.jpg a01.jpg"
                                << "" << list("a02.jpg") << true;
    QTest::newRow("two of three stay") << "a00.jpg a01.jpg a02.jpg"
                                       << "a00.jpg a02.jpg" << list("a00.jpg a02.jpg") << true;
    QTest::newRow("none can go") << "a00.jpg a02.jpg"
                                 << "a00.jpg a02.jpg" << list("a00.jpg a01.jpg a02.jpg") << false;
}

void TestThumbnailFiles::checkedPhotosAreDeleted()
{
    const auto [checked, protectedOnes, left, result]
        = lumi::test::row<QString, QString, QStringList, bool>();
    m_view->world.makePhotos(3);
    m_view->list();
    for (const QString &name : list(qPrintable(protectedOnes))) {
        protect(m_view->world.path(name));
    }
    m_view->check(qPrintable(checked));
    QVERIFY(m_view->waitForThumbnails());
    QCOMPARE(m_view->view.deleteChecked(), result);
    QCOMPARE(m_view->names(), left);
    QCOMPARE(QDir(m_view->world.store).entryList(QDir::Files), left);
    // Remaining photos keep their marks.
    for (const FPVItemObject *item : m_view->items) {
        QCOMPARE(item->isChecked(), list(qPrintable(checked)).contains(item->fileName()));
    }
}

void TestThumbnailFiles::aMarkedFolderOnlyLosesItsMark()
{
    m_view->world.makeFolder(QStringLiteral("dir"));
    m_view->world.makePhotos(2);
    m_view->list();
    m_view->check("dir a00.jpg");
    QVERIFY(m_view->view.deleteChecked());
    QVERIFY(m_view->exists("dir"));
    QCOMPARE(m_view->names(), list("dir a01.jpg"));
    QVERIFY(!m_view->view.anyChecked());
}

void TestThumbnailFiles::deletingMarkedPhotosShowsTheFirstPage()
{
    m_view->world.makePhotos(14);
    m_view->list();
    m_view->view.showPage(6, 7, true);
    QVERIFY(m_view->waitForPage());
    m_view->check("a13.jpg");
    QVERIFY(m_view->view.deleteChecked());
    QCOMPARE(m_view->view.topIndex(), 0);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->indexes().first(), 0);
    QCOMPARE(m_view->view.currentIndex(), 7);
}

void TestThumbnailFiles::deletingNothingLeavesThePage()
{
    m_view->world.makePhotos(14);
    m_view->list();
    m_view->view.showPage(6, 7, true);
    QVERIFY(m_view->waitForPage());
    const QWidget *container = m_view->container();
    QVERIFY(!m_view->view.deleteChecked());
    QCOMPARE(m_view->view.topIndex(), 6);
    QCOMPARE(m_view->container(), container);
}

void TestThumbnailFiles::emptySubfoldersAreDeleted()
{
    m_view->world.makeFolder(QStringLiteral("dir/empty"));
    m_view->world.makeFolder(QStringLiteral("dir/full/empty"));
    m_view->world.makeFolder(QStringLiteral("beside"));
    m_view->list(QStringLiteral("dir"));
    // The item at the cursor does not matter.
    m_view->view.showPage(0, 1, true);
    QVERIFY(m_view->view.deleteEmptyFolders());
    QVERIFY(!m_view->exists("dir/empty"));
    QVERIFY(m_view->exists("dir/full/empty") && m_view->exists("beside"));
    QVERIFY(m_view->view.deleteEmptyFolders());
}

LUMI_TEST(TestThumbnailFiles)
#include "TestThumbnailFiles.moc"
