// SPDX-License-Identifier: MIT
// Sorting photos into folders, moving them between media and deleting them by taps on the real window
// and its menus.
#include "files/FormFile.h"
#include "files/engine/FPVFileTree.h"
#include "tests/journeys/Traveller.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailLabel.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QToolButton>

using lumi::test::clicking;
using lumi::test::DialogAnswer;
using lumi::test::DialogDriver;
using lumi::test::list;
using lumi::test::pressing;
using lumi::test::Traveller;
using lumi::test::typing;

namespace {

const QString kFile = QStringLiteral("File");
const QString kEdit = QStringLiteral("Edit");

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestTidying : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_user = std::make_unique<Traveller>(); }

    void cleanup()
    {
        m_user.reset();
        FPVFileTree::resetState();
    }

    void photosAreSortedIntoAFolder();
    void aTripMovesFromTheCardToTheStore();
    void aTripIsCopiedToTheCardByKey();
    void aFolderIsCopiedAndRenamed();
    void badPhotosAreThrownAway();

private:
    /// Chooses an entry and answers its dialogs. Returns their lines.
    QStringList choose(const QString &menu, const char *entry,
                       const QList<DialogAnswer> &answers = {});
    [[nodiscard]] QStringList files(const QString &folder) const;

    std::unique_ptr<Traveller> m_user;
};

QStringList TestTidying::choose(const QString &menu, const char *entry,
                                const QList<DialogAnswer> &answers)
{
    DialogDriver driver;
    driver.answerInOrder(answers);
    m_user->chooseEntry(menu, QString::fromUtf8(entry));
    return driver.lines();
}

QStringList TestTidying::files(const QString &folder) const
{
    return QDir(m_user->world.path(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

void TestTidying::photosAreSortedIntoAFolder()
{
    m_user->world.makePhotos(5);
    const QByteArray photo = bytesOf(m_user->world.path(QStringLiteral("a01.jpg")));
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesPage(list("a00.jpg a01.jpg a02.jpg a03.jpg a04.jpg")));
    QCOMPARE(choose(kFile, "New Folder", {typing(QStringLiteral("best ones"))}).size(), 1);
    const QStringList withFolder = QStringList{QStringLiteral("best ones")}
        + list("a00.jpg a01.jpg a02.jpg a03.jpg a04.jpg");
    QVERIFY(m_user->seesPage(withFolder));

    m_user->tapCheckBox(QStringLiteral("a01.jpg"));
    m_user->tapCheckBox(QStringLiteral("a03.jpg"));
    QVERIFY(choose(kEdit, "Cut Selected").isEmpty());
    QVERIFY(m_user->seesPage(withFolder));
    m_user->tapItem(QStringLiteral("best ones"));
    QVERIFY(m_user->seesPage({}));
    QCOMPARE(choose(kEdit, "Paste"), QStringList{QStringLiteral("wait Working...")});
    QVERIFY(m_user->seesPage(list("a01.jpg a03.jpg")));
    QVERIFY(m_user->seesThumbnails());
    QCOMPARE(bytesOf(m_user->world.path(QStringLiteral("best ones/a01.jpg"))), photo);

    QCOMPARE(choose(kFile, "Change Name", {typing(QStringLiteral("sunset"))}).size(), 1);
    QVERIFY(m_user->seesPage(list("a03.jpg sunset.jpg")));
    QVERIFY(m_user->seesThumbnails());
    m_user->tapMiddle(m_user->upButton());
    QVERIFY(m_user->seesPage(QStringList{QStringLiteral("best ones")}
                             + list("a00.jpg a02.jpg a04.jpg")));
    QCOMPARE(bytesOf(m_user->world.path(QStringLiteral("best ones/sunset.jpg"))), photo);
}

void TestTidying::aTripMovesFromTheCardToTheStore()
{
    lumi::test::BrowserWorld &world = m_user->world;
    world.machine->insertCard(Slot::SD);
    world.makePhotos(3, world.machine->sd + QStringLiteral("/dcim"));
    world.makePhotos(1, QStringLiteral("trip"));
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesPage(list("trip")));
    m_user->tapItem(QStringLiteral("trip"));
    QVERIFY(m_user->seesPage(list("a00.jpg")));
    m_user->choose(QStringLiteral("SD Card"));
    QVERIFY(m_user->seesPage(list("a00.jpg a01.jpg a02.jpg")));
    QVERIFY(choose(kEdit, "Select All").isEmpty());
    QVERIFY(m_user->seesPage(list("a00.jpg a01.jpg a02.jpg")));
    m_user->tapCheckBox(QStringLiteral("a02.jpg"));
    QVERIFY(choose(kEdit, "Cut Selected").isEmpty());

    // The store shows the folder that was left.
    m_user->choose(QStringLiteral("Photo_Files"));
    QVERIFY(m_user->seesPage(list("a00.jpg")));
    QCOMPARE(choose(kEdit, "Paste"), QStringList{QStringLiteral("wait Working...")});
    QVERIFY(m_user->seesPage(list("a00.jpg a00-1.jpg a01.jpg")));
    QVERIFY(m_user->seesThumbnails());
    QCOMPARE(m_user->status(), QStringLiteral("a00-1"));
    m_user->choose(QStringLiteral("SD Card"));
    QVERIFY(m_user->seesPage(list("a02.jpg")));
}

void TestTidying::aTripIsCopiedToTheCardByKey()
{
    lumi::test::BrowserWorld &world = m_user->world;
    world.machine->insertCard(Slot::SD);
    world.makePhotos(1, world.machine->sd + QStringLiteral("/dcim"));
    world.makePhotos(2);
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesPage(list("a00.jpg a01.jpg")));
    QVERIFY(choose(kEdit, "Select All").isEmpty());
    QVERIFY(choose(kEdit, "Copy Selected").isEmpty());
    m_user->choose(QStringLiteral("SD Card"));
    QVERIFY(m_user->seesPage(list("a00.jpg")));
    DialogDriver driver;
    QTest::keyClick(m_user->window->windowHandle(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(driver.lines(), QStringList{QStringLiteral("wait Working...")});
    QVERIFY(m_user->seesPage(list("a00.jpg a00-1.jpg a01.jpg")));
}

void TestTidying::aFolderIsCopiedAndRenamed()
{
    m_user->world.makePhotos(2, QStringLiteral("trip"));
    m_user->world.makePhotos(1, QStringLiteral("trip/day"));
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesPage(list("trip")));
    // A tap on its name selects a folder without opening it.
    m_user->tapMiddle(
        m_user->cell(QStringLiteral("trip"))->findChildren<FPVThumbnailLabel *>().last());
    QVERIFY(choose(kEdit, "Copy").isEmpty());
    QCOMPARE(choose(kEdit, "Paste"), QStringList{QStringLiteral("wait Working...")});
    QVERIFY(m_user->seesPage(list("trip trip001")));
    QCOMPARE(choose(kFile, "Change Name",
                    {typing(QStringLiteral("trip")), clicking(QMessageBox::Ok),
                     typing(QStringLiteral("summer.06"))})
                 .size(),
             3);
    QVERIFY(m_user->seesPage(list("summer.06 trip")));
    QCOMPARE(files(QStringLiteral("summer.06")), list("a00.jpg a01.jpg"));
    QCOMPARE(files(QStringLiteral("trip")), list("a00.jpg a01.jpg day"));
}

void TestTidying::badPhotosAreThrownAway()
{
    m_user->world.makePhotos(8);
    m_user->world.makeFolder(QStringLiteral("empty"));
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesPage(list("empty a00.jpg a01.jpg a02.jpg a03.jpg a04.jpg")));
    m_user->tapItem(QStringLiteral("a02.jpg"));
    QCOMPARE(choose(kFile, "Delete", {pressing(Qt::Key_Return)}).size(), 1);
    QVERIFY(m_user->seesPage(list("empty a00.jpg a01.jpg a02.jpg a03.jpg a04.jpg")));
    QCOMPARE(choose(kFile, "Delete", {clicking(QMessageBox::Yes)}).size(), 2);
    QVERIFY(m_user->seesPage(list("empty a00.jpg a01.jpg a03.jpg a04.jpg a05.jpg")));
    QVERIFY(m_user->seesThumbnails());

    QVERIFY(choose(kEdit, "Select All").isEmpty());
    QVERIFY(m_user->seesThumbnails());
    m_user->tapCheckBox(QStringLiteral("a03.jpg"));
    QCOMPARE(choose(kFile, "Delete Selected", {clicking(QMessageBox::Yes)}).size(), 2);
    QVERIFY(m_user->seesPage(list("empty a03.jpg")));
    QCOMPARE(choose(kFile, "Delete Empty Folder", {clicking(QMessageBox::Yes)}).size(), 2);
    QVERIFY(m_user->seesPage(list("a03.jpg")));
    QVERIFY(m_user->seesThumbnails());
    QCOMPARE(files(QString()), list("a03.jpg"));
}

LUMI_TEST(TestTidying)
#include "TestTidying.moc"
