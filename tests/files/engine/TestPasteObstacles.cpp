// SPDX-License-Identifier: MIT
// Pastes that fail because of their source or target: missing files, permissions, no free space.
#include "tests/files/engine/PhotoPasteTest.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/FullDisk.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "tests/swap/MemoryFaults.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <memory>

using lumi::PasteResult;
using lumi::test::list;
using lumi::test::OrdinaryUser;

class TestPasteObstacles : public PhotoPasteTest
{
    Q_OBJECT

private Q_SLOTS:
    void aReadOnlySourceIsMovedWhole_data();
    void aReadOnlySourceIsMovedWhole();
    void aMissingSource();
    void aSourceThatBecameAPipe();
    void aFolderThatIsGoneHasNoRoom();
    void aFolderThatCantBeMade();
    void withoutABufferNothingIsPasted();
};

void TestPasteObstacles::aReadOnlySourceIsMovedWhole_data()
{
    QTest::addColumn<bool>("isOrdinary");
    QTest::newRow("by root") << false;
    QTest::newRow("by an ordinary user") << true;
}

/// The permissions of the folder decide whether a file can be removed.
void TestPasteObstacles::aReadOnlySourceIsMovedWhole()
{
    QFETCH(bool, isOrdinary);
    QVERIFY(QFile::setPermissions(m_files->path(QStringLiteral("a.jpg")),
                                  QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    {
        const std::unique_ptr<OrdinaryUser> user(isOrdinary ? new OrdinaryUser : nullptr);
        QCOMPARE(paste(true), PasteResult::Done);
    }
    QCOMPARE(m_files->entries(), list("to/ to/a.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/a.jpg")), m_photo);
    QCOMPARE(m_items->count(), 1);
}

void TestPasteObstacles::aMissingSource()
{
    QVERIFY(QFile::remove(m_files->path(QStringLiteral("a.jpg"))));
    QCOMPARE(paste(false), PasteResult::Missing);
    // A broken link counts as missing.
    m_files->makeLink(QStringLiteral("a.jpg"), QStringLiteral("gone"));
    QCOMPARE(paste(true), PasteResult::Missing);
    QVERIFY(QFileInfo(m_files->path(QStringLiteral("a.jpg"))).isSymLink());
    QVERIFY(m_files->entries(QStringLiteral("to")).isEmpty());
}

void TestPasteObstacles::aSourceThatBecameAPipe()
{
    QVERIFY(QFile::remove(m_files->path(QStringLiteral("a.jpg"))));
    m_files->makePipe(QStringLiteral("a.jpg"));
    QCOMPARE(paste(true), PasteResult::SourceNotOpened);
    QCOMPARE(m_files->entries(), list("a.jpg to/"));
}

/// The free space of a missing folder is unknown.
void TestPasteObstacles::aFolderThatIsGoneHasNoRoom()
{
    lumi::test::FakeMachine *machine = lumi::test::FakeMachine::install();
    const auto plenty = machine->diskAt;
    machine->diskAt = [plenty](const QByteArray &path) {
        return QFileInfo::exists(QFile::decodeName(path)) ? plenty(path) : DiskFigures{};
    };
    for (const bool cut : {true, false}) {
        m_clipboard.take({m_files->path(QStringLiteral("a.jpg"))}, cut);
        QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("none")), nullptr),
                 PasteResult::NoRoom);
        isUntouched();
    }
    QCOMPARE(paste(false), PasteResult::Done);
}

void TestPasteObstacles::aFolderThatCantBeMade()
{
    m_files->make(QStringLiteral("trip/a.jpg"), m_photo);
    m_clipboard.take({m_files->path(QStringLiteral("trip"))}, false);
    // The name is taken by a broken link.
    m_files->makeLink(QStringLiteral("to/trip"), QStringLiteral("gone"));
    QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to")), m_items.get()),
             PasteResult::TargetNotMade);
    QCOMPARE(m_items->count(), 0);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("trip"));
}

void TestPasteObstacles::withoutABufferNothingIsPasted()
{
    for (const bool cut : {true, false}) {
        const lumi::test::NoArrays noMemory;
        QCOMPARE(paste(cut), PasteResult::NoBuffer);
        isUntouched();
    }
    QCOMPARE(paste(false), PasteResult::Done);
}

LUMI_TEST(TestPasteObstacles)
#include "TestPasteObstacles.moc"
