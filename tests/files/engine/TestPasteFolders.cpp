// SPDX-License-Identifier: MIT
// Pastes of folders without failures.
#include "files/engine/FPVFileTree.h"
#include "items/FPVItemList.h"
#include "platform/session/QuitRequest.h"
#include "tests/files/engine/PasteTest.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"

#include <QFile>
#include <QTest>
#include <QTimer>

#include <csignal>

using lumi::PasteResult;
using lumi::test::FileFixture;
using lumi::test::list;

class TestPasteFolders : public PasteTest
{
    Q_OBJECT

private Q_SLOTS:
    void aFolderWithoutRoomArrivesEmpty();
    void aFolderBringsItsPhotosOnly();
    void aFolderWithoutPhotosArrivesEmpty();
    void anUnreadableFolderArrivesEmpty();
    void aFolderPastedTwiceGetsANumber();
    void aFolderIntoItself();
    void aCutFolderStays();
    void dotsAreNoFolders();
    void theListGetsOneItemForAFolder();
    void onlyFoldersLetEventsIn();
    void theEndOfTheProgramMakesNoFolder();
};

/// Making a folder does not ask for free space; pasting its photos does.
void TestPasteFolders::aFolderWithoutRoomArrivesEmpty()
{
    m_files->make(QStringLiteral("trip/a.jpg"), "1");
    m_machine->setFreeDiskKB(10240);
    FPVItemList items(m_files->path(QStringLiteral("to")), m_files->path());
    m_clipboard.take({m_files->path(QStringLiteral("trip"))}, false);
    QCOMPARE(m_clipboard.paste(items.currentPath(), &items), PasteResult::NoRoom);
    QCOMPARE(m_files->entries(), list("to/ to/trip/ trip/ trip/a.jpg"));
    QCOMPARE(items.count(), 1);
    QCOMPARE(items.at(0)->path(), m_files->path(QStringLiteral("to/trip")));
}

void TestPasteFolders::aFolderBringsItsPhotosOnly()
{
    for (const char *name : {"trip/a.jpg", "trip/B.JPEG", "trip/two words.jpg", "trip/notes.txt",
                             "trip/.hidden.jpg", "trip/day/c.jpg", "trip/x.jpg.txt"}) {
        m_files->make(QString::fromUtf8(name), name);
    }
    m_files->makePipe(QStringLiteral("trip/pipe.jpg"));
    m_files->makeLink(QStringLiteral("trip/link.jpg"), QStringLiteral("a.jpg"));
    const QStringList before = m_files->entries(QStringLiteral("trip"));
    QCOMPARE(paste("trip", false), PasteResult::Done);
    const QStringList arrived{QStringLiteral("trip/"), QStringLiteral("trip/B.JPEG"),
                              QStringLiteral("trip/a.jpg"), QStringLiteral("trip/two words.jpg")};
    QCOMPARE(m_files->entries(QStringLiteral("to")), arrived);
    QCOMPARE(m_files->content(QStringLiteral("to/trip/B.JPEG")), QByteArray("trip/B.JPEG"));
    QCOMPARE(m_files->entries(QStringLiteral("trip")), before);
}

void TestPasteFolders::aFolderWithoutPhotosArrivesEmpty()
{
    m_files->make(QStringLiteral("trip/day/c.jpg"), "1");
    m_files->make(QStringLiteral("trip/notes.txt"), "1");
    QCOMPARE(paste("trip", false), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("trip/"));
}

void TestPasteFolders::anUnreadableFolderArrivesEmpty()
{
    m_files->make(QStringLiteral("trip/a.jpg"), "1");
    const QString folder = m_files->path(QStringLiteral("trip"));
    QVERIFY(QFile::setPermissions(folder, {}));
    QVERIFY(QFile::setPermissions(m_files->path(QStringLiteral("to")), QFile::Permissions(0x7777)));
    {
        const lumi::test::OrdinaryUser user;
        QCOMPARE(paste("trip", false), PasteResult::Done);
    }
    QVERIFY(QFile::setPermissions(folder, QFile::Permissions(0x7777)));
    QCOMPARE(m_files->entries(), list("to/ to/trip/ trip/ trip/a.jpg"));
}

void TestPasteFolders::aFolderPastedTwiceGetsANumber()
{
    m_files->make(QStringLiteral("a.b/a.jpg"), "1");
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(paste("a.b", false), PasteResult::Done);
    }
    QCOMPARE(m_files->entries(QStringLiteral("to")),
             list("a.b/ a.b/a.jpg a.b001/ a.b001/a.jpg a.b002/ a.b002/a.jpg"));
}

void TestPasteFolders::aFolderIntoItself()
{
    m_files->make(QStringLiteral("to/a.jpg"), "1");
    QCOMPARE(paste("to", false), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("a.jpg to/ to/a.jpg"));
    QCOMPARE(paste("to", false), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("a.jpg to/ to/a.jpg to001/ to001/a.jpg"));
}

/// Folders can't be marked by the user, but a cut accepts them.
void TestPasteFolders::aCutFolderStays()
{
    m_files->make(QStringLiteral("trip/a.jpg"), "1");
    m_files->make(QStringLiteral("b.jpg"), "2");
    QCOMPARE(paste("trip b.jpg", true), PasteResult::Done);
    QCOMPARE(m_files->entries(), list("to/ to/b.jpg to/trip/ to/trip/a.jpg trip/ trip/a.jpg"));
    QVERIFY(m_clipboard.paths().isEmpty());
}

void TestPasteFolders::dotsAreNoFolders()
{
    m_files->make(QStringLiteral("trip/a.jpg"), "1");
    m_files->make(QStringLiteral("b.jpg"), "2");
    QCOMPARE(paste("trip/. trip/.. b.jpg", false), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("b.jpg"));
}

void TestPasteFolders::theListGetsOneItemForAFolder()
{
    m_files->make(QStringLiteral("trip/a.jpg"), "1");
    m_files->make(QStringLiteral("trip/b.jpg"), "2");
    FPVItemList items(m_files->path(QStringLiteral("to")), m_files->path());
    m_clipboard.take({m_files->path(QStringLiteral("trip"))}, false);
    QCOMPARE(m_clipboard.paste(items.currentPath(), &items), PasteResult::Done);
    QCOMPARE(m_clipboard.paste(items.currentPath(), &items), PasteResult::Done);
    QCOMPARE(items.count(), 2);
    QVERIFY(items.at(0)->isFolder());
    QCOMPARE(items.at(0)->path(), m_files->path(QStringLiteral("to/trip")));
    QCOMPARE(items.at(1)->path(), m_files->path(QStringLiteral("to/trip001")));
    QCOMPARE(items.at(1)->ownerList(), &items);
}

void TestPasteFolders::onlyFoldersLetEventsIn()
{
    m_files->make(QStringLiteral("trip/a.jpg"), "1");
    m_files->make(QStringLiteral("b.jpg"), FileFixture::noise(100000));
    bool ran = false;
    QTimer::singleShot(0, this, [&ran] {
        ran = true;
    });
    QCOMPARE(paste("b.jpg", false), PasteResult::Done);
    QVERIFY(!ran);
    QCOMPARE(paste("trip", false), PasteResult::Done);
    QVERIFY(ran);
}

void TestPasteFolders::theEndOfTheProgramMakesNoFolder()
{
    const lumi::QuitRequest request;
    m_files->make(QStringLiteral("trip/a.jpg"), "1");
    m_files->make(QStringLiteral("b.jpg"), "2");
    QTimer::singleShot(0, this, [] {
        ::raise(SIGTERM);
    });
    QCOMPARE(paste("b.jpg trip b.jpg", false), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("b.jpg"));
}

LUMI_TEST(TestPasteFolders)
#include "TestPasteFolders.moc"
