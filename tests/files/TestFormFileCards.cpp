// SPDX-License-Identifier: MIT
// The media of the browser form: which are offered, which folders are remembered, and what happens
// when a card is inserted or removed.
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFile>
#include <QTest>

using lumi::test::FormFixture;

namespace {

const QString kStore = QStringLiteral("Photo_Files");
const QString kSd = QStringLiteral("SD Card");
const QString kCf = QStringLiteral("CF Card");

} // namespace

class TestFormFileCards : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_form.reset(); }

    void onlyCardsThatAreThereAreOffered();
    void aCardOpensAtItsCameraFolder();
    void aCardWithoutACameraFolderOpensAtItsRoot();
    void everyMediumRemembersItsFolder();
    void readingAgainRemembersNothing();
    void aFolderReachedByUpStays_data();
    void aFolderReachedByUpStays();
    void aFolderThatCantBeListedIsRememberedToo();
    void aLostFolderLeadsToTheStoresRoot();
    void theFallbackIsRememberedForTheCard();
    void aPulledCardLeadsToTheStoresFolder();
    void aPulledCardThatIsNotShownChangesTheListOnly();
    void aCardPutInAgainOpensAtItsCameraFolder();
    void aCardThatCameAgainOnAnotherDeviceIsReadAnew();
    void aCardThatComesChangesTheListOnly();
    void thePulledCardTakesItsPlaceInTheListAlong();
    void theOpenListIsClosed();

private:
    /// SD card with "dcim/s.jpg" and "top.jpg", CF card with "dcim/c0.jpg" and "dcim/c1.jpg".
    void insertBoth();

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileCards::init()
{
    m_form = std::make_unique<FormFixture>();
    m_form->world.makePhotos(3);
    m_form->world.makePhotos(4, QStringLiteral("dir"));
}

void TestFormFileCards::insertBoth()
{
    lumi::test::BrowserWorld &world = m_form->world;
    world.machine->insertCard(Slot::SD);
    world.machine->insertCard(Slot::CF);
    world.makePhoto(world.machine->sd + QStringLiteral("/dcim/s.jpg"));
    world.makePhoto(world.machine->sd + QStringLiteral("/top.jpg"));
    world.makePhotos(2, world.machine->cf + QStringLiteral("/dcim"));
}

void TestFormFileCards::onlyCardsThatAreThereAreOffered()
{
    m_form->start();
    QCOMPARE(m_form->media(), QStringList{kStore});
    m_form->world.machine->insertCard(Slot::CF);
    m_form->start();
    QCOMPARE(m_form->media(), (QStringList{kStore, kCf}));
    m_form->world.machine->insertCard(Slot::SD);
    m_form->start();
    QCOMPARE(m_form->media(), (QStringList{kStore, kSd, kCf}));
    m_form->world.machine->removeCard(Slot::CF);
    m_form->start();
    QCOMPARE(m_form->media(), (QStringList{kStore, kSd}));
}

void TestFormFileCards::aCardOpensAtItsCameraFolder()
{
    insertBoth();
    m_form->start();
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    QCOMPARE(m_form->names(), QStringList{QStringLiteral("s.jpg")});
    QVERIFY(m_form->up->isEnabled());
    QCOMPARE(m_form->view->currentIndex(), 0);
    // Up leads to the card's root and no further.
    QTest::mouseClick(m_form->up, Qt::LeftButton);
    QVERIFY(m_form->waitForCells(2));
    QVERIFY(!m_form->up->isEnabled());
    m_form->form->btn_root_cliced();
    QTest::qWait(60);
    QCOMPARE(m_form->names(), (QStringList{QStringLiteral("dcim"), QStringLiteral("top.jpg")}));
    m_form->choose(kCf);
    QTRY_COMPARE(m_form->names(),
                 (QStringList{QStringLiteral("a00.jpg"), QStringLiteral("a01.jpg")}));
    QVERIFY(m_form->up->isEnabled());
    QTest::mouseClick(m_form->up, Qt::LeftButton);
    QTRY_COMPARE(m_form->names(), QStringList{QStringLiteral("dcim")});
    QVERIFY(!m_form->up->isEnabled());
}

void TestFormFileCards::aCardWithoutACameraFolderOpensAtItsRoot()
{
    insertBoth();
    QVERIFY(QDir(m_form->world.machine->sd + QStringLiteral("/dcim")).removeRecursively());
    m_form->start();
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    QCOMPARE(m_form->names(), QStringList{QStringLiteral("top.jpg")});
    QVERIFY(!m_form->up->isEnabled());
    // Now the root is remembered.
    m_form->world.makePhoto(m_form->world.machine->sd + QStringLiteral("/dcim/s.jpg"));
    m_form->choose(kStore);
    QVERIFY(m_form->waitForCells(4));
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(2));
    QVERIFY(!m_form->up->isEnabled());
}

void TestFormFileCards::everyMediumRemembersItsFolder()
{
    insertBoth();
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    m_form->tap(QStringLiteral("dir"));
    QVERIFY(m_form->waitForCells(4));
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    m_form->form->btn_root_cliced();
    QVERIFY(m_form->waitForCells(2));
    m_form->choose(kCf);
    QTRY_COMPARE(m_form->names(),
                 (QStringList{QStringLiteral("a00.jpg"), QStringLiteral("a01.jpg")}));
    m_form->choose(kSd);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("top.jpg")));
    m_form->choose(kStore);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
    QVERIFY(m_form->up->isEnabled());
}

void TestFormFileCards::readingAgainRemembersNothing()
{
    // The card's mount point is a file: the store is shown instead and read again.
    m_form->world.machine->sd = m_form->world.machine->folder.filePath(QStringLiteral("odd"));
    m_form->world.makeFile(m_form->world.machine->sd, "x");
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    m_form->choose(kSd);
    QTRY_COMPARE(m_form->combo->currentText(), kStore);
    QVERIFY(m_form->waitForCells(4));
    // No folder was entered, so the card's own folder is still opened.
    QVERIFY(QFile::remove(m_form->world.machine->sd));
    m_form->world.makePhoto(m_form->world.machine->sd + QStringLiteral("/s.jpg"));
    m_form->choose(kStore);
    QVERIFY(m_form->waitForCells(4));
    m_form->choose(kSd);
    QTRY_COMPARE(m_form->names(), QStringList{QStringLiteral("s.jpg")});
}

void TestFormFileCards::aFolderReachedByUpStays_data()
{
    QTest::addColumn<QString>("newName");
    QTest::newRow("its child was deleted") << QString();
    QTest::newRow("its child was renamed") << QStringLiteral("sub2");
    QTest::newRow("its child is still there") << QStringLiteral("sub");
}

void TestFormFileCards::aFolderReachedByUpStays()
{
    QFETCH(QString, newName);
    insertBoth();
    m_form->world.makePhotos(1, QStringLiteral("dir/sub"));
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    m_form->tap(QStringLiteral("dir"));
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("sub")));
    m_form->tap(QStringLiteral("sub"));
    QTRY_COMPARE(m_form->names().size(), 1);
    QTest::mouseClick(m_form->up, Qt::LeftButton);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("sub")));
    const QString dir = m_form->world.path(QStringLiteral("dir/"));
    if (newName.isEmpty()) {
        QVERIFY(QDir(dir + QStringLiteral("sub")).removeRecursively());
    } else if (newName != QLatin1String("sub")) {
        QVERIFY(QDir(dir).rename(QStringLiteral("sub"), newName));
    }
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    m_form->choose(kStore);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
    QVERIFY(m_form->up->isEnabled());
    QCOMPARE(m_form->names().size(), newName.isEmpty() ? 4 : 5);
    // One step up is the root of the store.
    QTest::mouseClick(m_form->up, Qt::LeftButton);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("dir")));
    QVERIFY(!m_form->up->isEnabled());
}

/// A folder that was missing temporarily is shown when its medium is chosen again.
void TestFormFileCards::aFolderThatCantBeListedIsRememberedToo()
{
    insertBoth();
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    const QString dir = m_form->world.path(QStringLiteral("dir"));
    FPVItemObject *item = m_form->cell(QStringLiteral("dir"))->item();
    QVERIFY(QDir().rename(dir, dir + QStringLiteral("2")));
    m_form->form->filelist_decided(item);
    QCOMPARE(m_form->view->currentObject(), item);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("dir2")));
    QVERIFY(!m_form->up->isEnabled());
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    QVERIFY(QDir().rename(dir + QStringLiteral("2"), dir));
    m_form->choose(kStore);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
    QVERIFY(m_form->up->isEnabled());
}

void TestFormFileCards::aLostFolderLeadsToTheStoresRoot()
{
    insertBoth();
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    m_form->tap(QStringLiteral("dir"));
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    QVERIFY(QDir(m_form->world.path(QStringLiteral("dir"))).removeRecursively());
    m_form->choose(kStore);
    QVERIFY(m_form->waitForCells(3));
    QCOMPARE(m_form->combo->currentIndex(), 0);
    QVERIFY(!m_form->up->isEnabled());
}

void TestFormFileCards::theFallbackIsRememberedForTheCard()
{
    // A card whose mount point is a file: neither camera folder nor root can be listed.
    m_form->world.machine->sd = m_form->world.machine->folder.filePath(QStringLiteral("odd"));
    m_form->world.makeFile(m_form->world.machine->sd, "x");
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    m_form->choose(kSd);
    QTRY_COMPARE(m_form->combo->currentText(), kStore);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("dir")));
    QVERIFY(!m_form->up->isEnabled());
    m_form->tap(QStringLiteral("dir"));
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
    // The store still remembers its root; the entered folder is remembered for the card.
    m_form->choose(kStore);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("dir")));
    m_form->choose(kSd);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
}

void TestFormFileCards::aPulledCardLeadsToTheStoresFolder()
{
    insertBoth();
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    m_form->tap(QStringLiteral("dir"));
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    m_form->world.machine->removeCard(Slot::SD);
    m_form->tellCardChange();
    QCOMPARE(m_form->media(), (QStringList{kStore, kCf}));
    QCOMPARE(m_form->combo->currentText(), kStore);
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
    QVERIFY(m_form->up->isEnabled());
}

void TestFormFileCards::aPulledCardThatIsNotShownChangesTheListOnly()
{
    insertBoth();
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    m_form->tap(QStringLiteral("dir"));
    QTRY_VERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
    const QPointer<FPVThumbnailItem> cell = m_form->cell(QStringLiteral("a03.jpg"));
    m_form->world.machine->removeCard(Slot::CF);
    m_form->tellCardChange();
    QCOMPARE(m_form->media(), (QStringList{kStore, kSd}));
    QCOMPARE(m_form->combo->currentText(), kStore);
    QTest::qWait(60);
    QVERIFY(!cell.isNull());
    QVERIFY(m_form->names().contains(QStringLiteral("a03.jpg")));
}

void TestFormFileCards::aCardPutInAgainOpensAtItsCameraFolder()
{
    insertBoth();
    m_form->start();
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    m_form->form->btn_root_cliced();
    QVERIFY(m_form->waitForCells(2));
    m_form->world.machine->removeCard(Slot::SD);
    m_form->tellCardChange();
    QVERIFY(m_form->waitForCells(4));
    m_form->world.machine->insertCard(Slot::SD);
    m_form->tellCardChange();
    m_form->choose(kSd);
    QVERIFY(m_form->waitForCells(1));
    QCOMPARE(m_form->names(), QStringList{QStringLiteral("s.jpg")});
}

/// As after removing and inserting a card with one message for both.
void TestFormFileCards::aCardThatCameAgainOnAnotherDeviceIsReadAnew()
{
    insertBoth();
    m_form->start();
    m_form->choose(kSd);
    QTRY_COMPARE(m_form->names(), QStringList{QStringLiteral("s.jpg")});
    const QString camera = m_form->world.machine->sd + QStringLiteral("/dcim");
    QVERIFY(QDir(camera).removeRecursively());
    QVERIFY(QFile::link(QStringLiteral("/proc/sys/kernel"), camera));
    m_form->tellCardChange();
    QCOMPARE(m_form->combo->currentText(), kSd);
    QTRY_VERIFY(!m_form->names().contains(QStringLiteral("s.jpg")));
}

void TestFormFileCards::aCardThatComesChangesTheListOnly()
{
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    const QPointer<FPVThumbnailItem> cell = m_form->cell(QStringLiteral("a00.jpg"));
    insertBoth();
    m_form->tellCardChange();
    QCOMPARE(m_form->media(), (QStringList{kStore, kSd, kCf}));
    QCOMPARE(m_form->combo->currentText(), kStore);
    QTest::qWait(60);
    QVERIFY(!cell.isNull());
}

void TestFormFileCards::thePulledCardTakesItsPlaceInTheListAlong()
{
    insertBoth();
    m_form->start();
    m_form->choose(kCf);
    QTRY_COMPARE(m_form->names().size(), 2);
    m_form->view->checkAll();
    QTRY_COMPARE(m_form->names().size(), 2);
    const QPointer<FPVThumbnailItem> cell(m_form->cell(QStringLiteral("a01.jpg")));
    m_form->world.machine->removeCard(Slot::SD);
    m_form->tellCardChange();
    // The CF card has another row in the combo box now and is still shown.
    QCOMPARE(m_form->combo->currentText(), kCf);
    QTest::qWait(60);
    QVERIFY(cell != nullptr);
    QVERIFY(m_form->view->anyChecked());
}

void TestFormFileCards::theOpenListIsClosed()
{
    m_form->start();
    m_form->combo->showPopup();
    QVERIFY(m_form->combo->view()->isVisible());
    insertBoth();
    m_form->tellCardChange();
    QVERIFY(!m_form->combo->view()->isVisible());
    QCOMPARE(m_form->media(), (QStringList{kStore, kSd, kCf}));
}

LUMI_TEST(TestFormFileCards)
#include "TestFormFileCards.moc"
