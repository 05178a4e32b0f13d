// SPDX-License-Identifier: MIT
// Cursor and keys of the thumbnail view.
#include "items/FPVItemFolder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/views/ViewFixture.h"
#include "views/FPVThumbnailLabel.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

using lumi::test::NotingImage;
using lumi::test::ViewFixture;

class TestThumbnailCursor : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_view = std::make_unique<ViewFixture>(); }

    void cleanup() { m_view.reset(); }

    void upAndDownFollowTheHinge_data();
    void upAndDownFollowTheHinge();
    void theCursorMovesOverThePage();
    void theCursorTurnsThePageRowByRow();
    void rightOfTheLastCellShowsTheNextRow();
    void arrowsDontLeadBackOntoThePage();
    void spaceTogglesAPhotoThroughItsCell();
    void spaceTogglesAPhotoOffThePage();
    void spaceLeavesFoldersAlone();
    void returnAndEnterOpen();
    void withoutAnObjectOnlyBackspaceActs();
    void tabInTheViewStartsTheCursor();
    void focusByTabStartsTheCursor_data();
    void focusByTabStartsTheCursor();
    void anEmptyFolderLetsTabPass();
    void backspaceEndsAtTheRoots_data();
    void backspaceEndsAtTheRoots();
    void otherKeysAreNotAccepted();
    void nextAndPreviousPicturesWrapAndSkipFolders();
    void nextAndPreviousPicturesFromNoCursor();
    void withoutPicturesThereIsNoNextOne();
    void aStaleCursorIsNoObject();
    void settingTheObjectMovesCursorOrPage();
    void settingTheObjectQuietlyBuildsNothing();
    void anUnknownObjectIsNotSet();
    void checksAreFoundInTheWholeList();

private:
    void makeStore();

    std::unique_ptr<ViewFixture> m_view;
};

/// A folder "dir" and the photos a00 to a03, listed and shown.
void TestThumbnailCursor::makeStore()
{
    m_view->world.makePhotos(4);
    m_view->world.makePhotos(2, QStringLiteral("dir"));
    m_view->list();
    QVERIFY(m_view->waitForThumbnails());
}

void TestThumbnailCursor::upAndDownFollowTheHinge_data()
{
    QTest::addColumn<int>("hinge");
    QTest::addColumn<int>("device");
    QTest::addColumn<int>("down");
    QTest::addColumn<int>("up");
    QTest::newRow("hinge closed, usual keyboard") << 0 << 0 << 7 << 1;
    QTest::newRow("hinge closed, another keyboard") << 0 << 2 << 7 << 1;
    QTest::newRow("hinge closed, own keyboard") << 0 << 1 << 3 << 5;
    QTest::newRow("hinge turned") << 256 << 0 << 3 << 5;
    QTest::newRow("hinge turned, own keyboard") << 256 << 1 << 3 << 5;
}

void TestThumbnailCursor::upAndDownFollowTheHinge()
{
    QFETCH(int, hinge);
    QFETCH(int, device);
    m_view->world.machine->hingeResult = hinge;
    m_view->world.machine->keyboard = device;
    m_view->fill(9);
    const auto indexAfter = [this](Qt::Key key) {
        m_view->view.showPage(3, 4, true);
        if (!m_view->waitForPage() || m_view->shownCursor() != 4) {
            return -1;
        }
        m_view->key(key);
        return m_view->view.currentIndex();
    };
    QTEST(indexAfter(Qt::Key_Down), "down");
    QTEST(indexAfter(Qt::Key_Up), "up");
}

void TestThumbnailCursor::theCursorMovesOverThePage()
{
    m_view->fill(6);
    m_view->view.showPage(0, 0, true);
    QVERIFY(m_view->waitForPage());
    const QList<FPVThumbnailItem *> page = m_view->cells();
    const std::pair<Qt::Key, int> moves[] = {{Qt::Key_Right, 1},
                                             {Qt::Key_Down, 4},
                                             {Qt::Key_Right, 5},
                                             {Qt::Key_Up, 2},
                                             {Qt::Key_Left, 1}};
    int told = 1;
    for (const auto &[key, index] : moves) {
        m_view->key(key);
        QCOMPARE(m_view->view.currentIndex(), index);
        QCOMPARE(m_view->shownCursor(), index);
        QCOMPARE(m_view->news.size(), ++told);
    }
    QCOMPARE(m_view->cells(), page);
}

void TestThumbnailCursor::theCursorTurnsThePageRowByRow()
{
    m_view->fill(20);
    m_view->view.showPage(6, 10, true);
    QVERIFY(m_view->waitForPage());
    m_view->key(Qt::Key_Down);
    QCOMPARE(m_view->view.topIndex(), 9);
    QCOMPARE(m_view->view.currentIndex(), 13);
    QCOMPARE(m_view->vBar->value(), 4);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->shownCursor(), 13);
    m_view->view.setCurrentObject(m_view->items.at(9));
    m_view->key(Qt::Key_Left);
    QCOMPARE(m_view->view.topIndex(), 6);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->shownCursor(), 8);
}

void TestThumbnailCursor::rightOfTheLastCellShowsTheNextRow()
{
    m_view->fill(20);
    m_view->view.showPage(0, 5, true);
    QVERIFY(m_view->waitForPage());
    m_view->news.clear();
    m_view->key(Qt::Key_Right);
    QCOMPARE(m_view->view.topIndex(), 3);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->indexes(), (QList<int>{3, 4, 5, 6, 7, 8}));
    QCOMPARE(m_view->shownCursor(), 6);
    QCOMPARE(m_view->news.size(), 1);
}

void TestThumbnailCursor::arrowsDontLeadBackOntoThePage()
{
    m_view->fill(20);
    m_view->view.showPage(0, 2, true);
    QVERIFY(m_view->waitForPage());
    m_view->view.showPage(3, -1, true);
    QVERIFY(m_view->waitForPage());
    // The target is on the page, the cursor itself isn't.
    m_view->key(Qt::Key_Right);
    QCOMPARE(m_view->view.currentIndex(), 2);
    QCOMPARE(m_view->shownCursor(), -1);
    QCOMPARE(m_view->news.size(), 1);
}

void TestThumbnailCursor::spaceTogglesAPhotoThroughItsCell()
{
    makeStore();
    m_view->tap(1);
    auto *box = m_view->cellOf(1)->findChild<QAbstractButton *>();
    m_view->key(Qt::Key_Space);
    QVERIFY(m_view->items.at(1)->isChecked());
    QVERIFY(box->isChecked());
    m_view->key(Qt::Key_Space);
    QVERIFY(!m_view->items.at(1)->isChecked());
    QVERIFY(!box->isChecked());
}

void TestThumbnailCursor::spaceTogglesAPhotoOffThePage()
{
    m_view->fill(20);
    m_view->view.showPage(0, 2, true);
    QVERIFY(m_view->waitForPage());
    m_view->view.showPage(9, -1, true);
    QVERIFY(m_view->waitForPage());
    m_view->key(Qt::Key_Space);
    QVERIFY(m_view->items.at(2)->isChecked());
}

void TestThumbnailCursor::spaceLeavesFoldersAlone()
{
    makeStore();
    QTest::mousePress(m_view->cellOf(0), Qt::LeftButton, {}, QPoint(60, 60));
    m_view->key(Qt::Key_Space);
    QVERIFY(!m_view->items.at(0)->isChecked());
    m_view->view.itemselected(nullptr);
    m_view->key(Qt::Key_Space);
    QVERIFY(!m_view->items.at(0)->isChecked());
}

void TestThumbnailCursor::returnAndEnterOpen()
{
    makeStore();
    m_view->tap(1);
    m_view->news.clear();
    m_view->key(Qt::Key_Return);
    m_view->key(Qt::Key_Enter);
    QCOMPARE(m_view->news,
             (QStringList{QStringLiteral("decided a00"), QStringLiteral("decided a00")}));
}

void TestThumbnailCursor::withoutAnObjectOnlyBackspaceActs()
{
    m_view->world.makePhotos(9, QStringLiteral("sub"));
    m_view->list(QStringLiteral("sub"));
    QVERIFY(m_view->waitForPage());
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Space, Qt::Key_Return}) {
        m_view->key(key);
    }
    QVERIFY(m_view->news.isEmpty());
    QCOMPARE(m_view->view.topIndex(), 0);
    QVERIFY(!m_view->view.anyChecked());
    QCOMPARE(m_view->world.machine->hingeCalls, 0);
    m_view->key(Qt::Key_Backspace);
    QCOMPARE(m_view->news, QStringList{QStringLiteral("up")});
}

void TestThumbnailCursor::tabInTheViewStartsTheCursor()
{
    m_view->fill(9);
    m_view->view.showPage(3, -1, true);
    m_view->key(Qt::Key_Tab); // the page has no cells yet
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->shownCursor(), 3);
    QCOMPARE(m_view->news.size(), 1);
    QVERIFY(m_view->view.hasFocus());
    m_view->key(Qt::Key_Right);
    QCOMPARE(m_view->shownCursor(), 4);
    m_view->news.clear();
    m_view->key(Qt::Key_Tab); // leaves the view
    QCOMPARE(m_view->shownCursor(), 4);
    QVERIFY(m_view->news.isEmpty());
}

void TestThumbnailCursor::focusByTabStartsTheCursor_data()
{
    lumi::test::columns<Qt::FocusReason, int, int>();
    QTest::newRow("Tab") << Qt::TabFocusReason << -1 << 3;
    QTest::newRow("Shift+Tab") << Qt::BacktabFocusReason << -1 << 3;
    QTest::newRow("the cursor is on the page") << Qt::TabFocusReason << 4 << 4;
    QTest::newRow("the cursor is on another page") << Qt::TabFocusReason << 1 << 3;
    QTest::newRow("a tap") << Qt::MouseFocusReason << -1 << -1;
    QTest::newRow("the window") << Qt::ActiveWindowFocusReason << -1 << -1;
}

void TestThumbnailCursor::focusByTabStartsTheCursor()
{
    const auto [reason, before, after] = lumi::test::row<Qt::FocusReason, int, int>();
    m_view->fill(9);
    m_view->view.showPage(0, before, true);
    QVERIFY(m_view->waitForPage());
    m_view->view.showPage(3, before, true);
    QVERIFY(m_view->waitForPage());
    m_view->view.clearFocus();
    m_view->view.setFocus(reason);
    QCoreApplication::processEvents();
    QCOMPARE(m_view->shownCursor(), after);
}

void TestThumbnailCursor::anEmptyFolderLetsTabPass()
{
    m_view->showLarge();
    m_view->key(Qt::Key_Tab);
    QCOMPARE(m_view->view.currentIndex(), -1);
    QVERIFY(m_view->news.isEmpty());
}

void TestThumbnailCursor::backspaceEndsAtTheRoots_data()
{
    lumi::test::columns<QString, bool>();
    QTest::newRow("the photo store") << QString() << false;
    QTest::newRow("a folder of the store") << QStringLiteral("sub") << true;
    QTest::newRow("a folder of the SD card") << QStringLiteral("SD/dcim") << true;
}

void TestThumbnailCursor::backspaceEndsAtTheRoots()
{
    auto [folder, goesUp] = lumi::test::row<QString, bool>();
    folder.replace(QLatin1String("SD"), m_view->world.machine->sd);
    m_view->world.makePhotos(2, folder);
    m_view->list(folder);
    QVERIFY(m_view->waitForPage());
    m_view->key(Qt::Key_Backspace);
    m_view->tap(0);
    m_view->key(Qt::Key_Backspace);
    QCOMPARE(m_view->news.count(QStringLiteral("up")), goesUp ? 2 : 0);
}

void TestThumbnailCursor::otherKeysAreNotAccepted()
{
    makeStore();
    m_view->tap(1);
    const std::pair<int, bool> keys[]
        = {{Qt::Key_C, false},    {Qt::Key_Delete, false}, {Qt::Key_Right, true},
           {Qt::Key_Space, true}, {Qt::Key_Return, true},  {Qt::Key_Escape, false}};
    for (const auto &[key, taken] : keys) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        event.setAccepted(true);
        QCoreApplication::sendEvent(&m_view->view, &event);
        QCOMPARE(event.isAccepted(), taken);
    }
}

void TestThumbnailCursor::nextAndPreviousPicturesWrapAndSkipFolders()
{
    m_view->world.makePhotos(2);
    m_view->world.makeFolder(QStringLiteral("d1"));
    m_view->world.makeFolder(QStringLiteral("d2"));
    m_view->list();
    FPVThumbnailView &view = m_view->view;
    view.showPage(0, 2, true);
    QVERIFY(m_view->waitForPage());
    const QWidget *page = m_view->container();
    m_view->news.clear();
    QCOMPARE(view.nextPicture()->baseName(), QStringLiteral("a01"));
    QCOMPARE(view.currentIndex(), 3);
    QCOMPARE(view.nextPicture()->baseName(), QStringLiteral("a00"));
    QCOMPARE(view.currentIndex(), 2);
    QCOMPARE(view.prevPicture()->baseName(), QStringLiteral("a01"));
    QCOMPARE(view.prevPicture()->baseName(), QStringLiteral("a00"));
    QVERIFY(m_view->news.isEmpty());
    QCOMPARE(m_view->container(), page);
    // The only picture is its own neighbour.
    QFile::remove(m_view->world.path(QStringLiteral("a01.jpg")));
    m_view->list();
    QCOMPARE(view.nextPicture()->baseName(), QStringLiteral("a00"));
    QCOMPARE(view.prevPicture()->baseName(), QStringLiteral("a00"));
}

void TestThumbnailCursor::nextAndPreviousPicturesFromNoCursor()
{
    m_view->fill(3);
    QCOMPARE(m_view->view.nextPicture(), m_view->items.at(0));
    m_view->items.remove(0);
    m_view->items.remove(0);
    m_view->view.showPage(0, 0, true);
    m_view->fill(4);
    m_view->view.showPage(0, 4, true);
    m_view->items.remove(4);
    // The cursor is now past the end.
    QCOMPARE(m_view->view.currentIndex(), 4);
    QCOMPARE(m_view->view.prevPicture(), m_view->items.at(3));
    QCOMPARE(m_view->view.currentIndex(), 3);
}

void TestThumbnailCursor::withoutPicturesThereIsNoNextOne()
{
    m_view->showLarge();
    QVERIFY(m_view->view.nextPicture() == nullptr);
    QVERIFY(m_view->view.prevPicture() == nullptr);
    m_view->world.makeFolder(QStringLiteral("d1"));
    m_view->world.makeFolder(QStringLiteral("d2"));
    m_view->list();
    m_view->view.showPage(0, 1, true);
    QVERIFY(m_view->view.nextPicture() == nullptr);
    QVERIFY(m_view->view.prevPicture() == nullptr);
    QCOMPARE(m_view->view.currentIndex(), 1);
}

void TestThumbnailCursor::aStaleCursorIsNoObject()
{
    m_view->fill(3);
    m_view->view.showPage(0, 2, true);
    m_view->items.remove(2);
    QCOMPARE(m_view->view.currentIndex(), 2);
    QVERIFY(m_view->view.currentObject() == nullptr);
    for (int action = 0; action <= 5; ++action) {
        m_view->view.action(action);
    }
    QVERIFY(m_view->news.isEmpty());
    QVERIFY(!m_view->view.currentIsParentEntry());
}

void TestThumbnailCursor::settingTheObjectMovesCursorOrPage()
{
    m_view->fill(20);
    QVERIFY(m_view->waitForPage());
    m_view->view.setCurrentObject(m_view->items.at(4));
    QCOMPARE(m_view->view.currentIndex(), 4);
    QCOMPARE(m_view->shownCursor(), 4);
    QCOMPARE(m_view->news.size(), 1);
    m_view->view.setCurrentObject(m_view->items.at(13));
    QCOMPARE(m_view->view.topIndex(), 12);
    QCOMPARE(m_view->view.currentIndex(), 13);
    QCOMPARE(m_view->news.size(), 1);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->shownCursor(), 13);
    QCOMPARE(m_view->news.size(), 2);
}

void TestThumbnailCursor::settingTheObjectQuietlyBuildsNothing()
{
    m_view->fill(20);
    QVERIFY(m_view->waitForPage());
    const QWidget *page = m_view->container();
    m_view->view.setCurrentObjectQuiet(m_view->items.at(13));
    QCOMPARE(m_view->view.topIndex(), 13);
    QCOMPARE(m_view->view.currentIndex(), 13);
    QCOMPARE(m_view->container(), page);
    QVERIFY(m_view->news.isEmpty());
    m_view->view.showPage(-1, 13, true);
    QCOMPARE(m_view->view.topIndex(), 12);
}

void TestThumbnailCursor::anUnknownObjectIsNotSet()
{
    m_view->fill(20);
    m_view->view.showPage(3, 4, true);
    NotingImage stranger(m_view->world.store);
    m_view->view.setCurrentObject(&stranger);
    m_view->view.setCurrentObjectQuiet(&stranger);
    m_view->view.setCurrentObject(nullptr);
    QCOMPARE(m_view->view.currentIndex(), 4);
    QCOMPARE(m_view->view.topIndex(), 3);
}

void TestThumbnailCursor::checksAreFoundInTheWholeList()
{
    m_view->fill(20);
    QVERIFY(!m_view->view.anyChecked());
    m_view->items.at(19)->setChecked(true);
    QVERIFY(m_view->view.anyChecked());
}

LUMI_TEST(TestThumbnailCursor)
#include "TestThumbnailCursor.moc"
