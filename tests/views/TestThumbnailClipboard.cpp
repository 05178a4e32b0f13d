// SPDX-License-Identifier: MIT
// Marks, the clipboard, and the page after a paste.
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "tests/views/ViewFixture.h"

#include <QTest>

using lumi::PasteResult;
using lumi::test::list;
using lumi::test::ViewFixture;

class TestThumbnailClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_view = std::make_unique<ViewFixture>(); }

    void cleanup() { m_view.reset(); }

    void copyTakesPhotosAndFolders();
    void cutTakesPhotosOnly();
    void markedItemsAreTakenInTheirOrder();
    void nothingMarkedLeavesTheClipboard();
    void aCutChangesNothingBeforeThePaste();
    void checkAllMarksPhotosOnly();
    void uncheckAllLeavesNoMark();
    void marksKeepThePageAndTheCursor();
    void marksAreDrawn();
    void aPasteShowsItsFirstItem();
    void aPasteWithoutNewItemsLeavesThePage();
    void aFailedPasteShowsWhatItMade();

private:
    std::unique_ptr<ViewFixture> m_view;
};

void TestThumbnailClipboard::copyTakesPhotosAndFolders()
{
    m_view->world.makeFolder(QStringLiteral("dir"));
    m_view->world.makePhotos(1);
    m_view->list();
    m_view->view.copyCurrent();
    QVERIFY(m_view->view.clipboardPaths().isEmpty());
    for (const int index : {0, 1}) {
        m_view->view.clipboard().take({QStringLiteral("/old")}, true);
        m_view->view.showPage(0, index, true);
        m_view->view.copyCurrent();
        QCOMPARE(m_view->view.clipboardPaths(), QStringList{m_view->items.at(index)->path()});
        QVERIFY(!m_view->view.clipboard().isCut());
    }
}

void TestThumbnailClipboard::cutTakesPhotosOnly()
{
    m_view->world.makeFolder(QStringLiteral("dir"));
    m_view->world.makePhotos(1);
    m_view->list();
    m_view->view.clipboard().take({QStringLiteral("/old")}, false);
    m_view->view.showPage(0, 0, true);
    m_view->view.cutCurrent();
    QCOMPARE(m_view->view.clipboardPaths(), list("/old"));
    QVERIFY(!m_view->view.clipboard().isCut());
    m_view->view.showPage(0, 1, true);
    m_view->view.cutCurrent();
    QCOMPARE(m_view->view.clipboardPaths(), QStringList{m_view->items.at(1)->path()});
    QVERIFY(m_view->view.clipboard().isCut());
}

void TestThumbnailClipboard::markedItemsAreTakenInTheirOrder()
{
    m_view->world.makeFolder(QStringLiteral("dir"));
    m_view->world.makePhotos(4);
    m_view->list();
    // The user cannot mark a folder, but a marked folder is taken.
    m_view->check("a03.jpg dir a01.jpg");
    const QStringList paths{m_view->items.at(0)->path(), m_view->items.at(2)->path(),
                            m_view->items.at(4)->path()};
    m_view->view.clipboard().take({QStringLiteral("/old")}, false);
    m_view->view.cutChecked();
    QCOMPARE(m_view->view.clipboardPaths(), paths);
    QVERIFY(m_view->view.clipboard().isCut());
    m_view->view.copyChecked();
    QCOMPARE(m_view->view.clipboardPaths(), paths);
    QVERIFY(!m_view->view.clipboard().isCut());
    QVERIFY(m_view->items.at(2)->isChecked());
}

void TestThumbnailClipboard::nothingMarkedLeavesTheClipboard()
{
    m_view->world.makePhotos(2);
    m_view->list();
    m_view->view.clipboard().take({QStringLiteral("/old")}, false);
    m_view->view.cutChecked();
    QVERIFY(!m_view->view.clipboard().isCut());
    m_view->view.clipboard().take({QStringLiteral("/old")}, true);
    m_view->view.copyChecked();
    QVERIFY(m_view->view.clipboard().isCut());
    QCOMPARE(m_view->view.clipboardPaths(), list("/old"));
}

void TestThumbnailClipboard::aCutChangesNothingBeforeThePaste()
{
    m_view->world.makePhotos(2);
    m_view->list();
    m_view->view.showPage(0, 0, true);
    QVERIFY(m_view->waitForThumbnails());
    const QWidget *container = m_view->container();
    const QImage before = m_view->view.grab().toImage();
    m_view->view.cutCurrent();
    m_view->check("a00.jpg a01.jpg");
    m_view->view.cutChecked();
    QCOMPARE(m_view->container(), container);
    QCOMPARE(m_view->view.grab().toImage(), before);
    QVERIFY(m_view->exists("a00.jpg"));
}

void TestThumbnailClipboard::checkAllMarksPhotosOnly()
{
    m_view->world.makeFolder(QStringLiteral("dir"));
    m_view->world.makePhotos(40);
    m_view->list();
    m_view->check("dir");
    m_view->view.checkAll();
    for (const FPVItemObject *item : m_view->items) {
        QCOMPARE(item->isChecked(), item->isPicture());
    }
}

void TestThumbnailClipboard::uncheckAllLeavesNoMark()
{
    m_view->world.makeFolder(QStringLiteral("dir"));
    m_view->world.makePhotos(10);
    m_view->list();
    m_view->check("dir a00.jpg a09.jpg");
    m_view->view.uncheckAll();
    QVERIFY(!m_view->view.anyChecked());
}

void TestThumbnailClipboard::marksKeepThePageAndTheCursor()
{
    m_view->world.makePhotos(14);
    m_view->list();
    m_view->view.showPage(6, 8, true);
    QVERIFY(m_view->waitForPage());
    for (const bool on : {true, false}) {
        on ? m_view->view.checkAll() : m_view->view.uncheckAll();
        QCOMPARE(m_view->view.topIndex(), 6);
        QVERIFY(m_view->waitForPage());
        QCOMPARE(m_view->indexes().first(), 6);
        QCOMPARE(m_view->view.currentIndex(), 8);
    }
}

void TestThumbnailClipboard::marksAreDrawn()
{
    m_view->world.makePhotos(1);
    m_view->list();
    QVERIFY(m_view->waitForThumbnails());
    const QColor marked = Qt::red; // of this world's pixmap
    const auto hasMark = [this, marked] {
        const QImage page = m_view->view.grab().toImage();
        for (int y = 0; y < page.height(); ++y) {
            for (int x = 0; x < page.width(); ++x) {
                if (page.pixelColor(x, y) == marked) {
                    return true;
                }
            }
        }
        return false;
    };
    QVERIFY(!hasMark());
    m_view->view.checkAll();
    QTRY_VERIFY(hasMark());
    m_view->view.uncheckAll();
    QVERIFY(m_view->waitForThumbnails());
    QTRY_VERIFY(!hasMark());
}

void TestThumbnailClipboard::aPasteShowsItsFirstItem()
{
    m_view->world.makePhotos(9, QStringLiteral("dir"));
    m_view->world.makePhotos(2, QStringLiteral("other"));
    m_view->list(QStringLiteral("dir"));
    m_view->view.showPage(0, 0, true);
    const QString other = m_view->world.path(QStringLiteral("other"));
    m_view->view.clipboard().take({other, QString(other + QStringLiteral("/a01.jpg"))}, false);
    QCOMPARE(m_view->view.paste(), PasteResult::Done);
    QCOMPARE(m_view->names().mid(9), list("other a01-1.jpg"));
    QVERIFY(m_view->waitForThumbnails());
    QVERIFY(m_view->indexes().contains(9));
    QCOMPARE(m_view->view.currentObject()->fileName(), QStringLiteral("other"));
    QVERIFY(m_view->exists("dir/other/a00.jpg") && m_view->exists("dir/a01-1.jpg"));
}

void TestThumbnailClipboard::aPasteWithoutNewItemsLeavesThePage()
{
    m_view->world.makePhotos(2);
    m_view->list();
    m_view->view.showPage(0, 1, true);
    QVERIFY(m_view->waitForThumbnails());
    const QWidget *container = m_view->container();
    m_view->view.cutCurrent();
    QCOMPARE(m_view->view.paste(), PasteResult::Done);
    m_view->view.clipboard().take({QStringLiteral("/none.jpg")}, false);
    QCOMPARE(m_view->view.paste(), PasteResult::Missing);
    QCOMPARE(m_view->container(), container);
    QVERIFY(m_view->exists("a01.jpg"));
}

void TestThumbnailClipboard::aFailedPasteShowsWhatItMade()
{
    m_view->world.makePhotos(1);
    m_view->list();
    m_view->view.showPage(0, 0, true);
    m_view->view.clipboard().take({m_view->items.at(0)->path(), QStringLiteral("/none.jpg")},
                                  false);
    QCOMPARE(m_view->view.paste(), PasteResult::Missing);
    QCOMPARE(m_view->names(), list("a00.jpg a00-1.jpg"));
    QCOMPARE(m_view->view.currentIndex(), 1);
}

LUMI_TEST(TestThumbnailClipboard)
#include "TestThumbnailClipboard.moc"
