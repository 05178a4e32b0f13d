// SPDX-License-Identifier: MIT
#include "app/common/Medium.h"
#include "platform/cards/CardSlots.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QTest>

#include <unistd.h>

using lumi::Medium;
using lumi::test::FakeMachine;

class TestMedium : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_machine = FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void aCardIsThereAsLongAsItIsIn_data();
    void aCardIsThereAsLongAsItIsIn();

    void theOtherSlotDoesNotCount();
    void aMountPointMayVanish();
    void anotherFileSystemIsAnotherMedium_data();
    void anotherFileSystemIsAnotherMedium();
    void aFolderMayBeClosed();
    void aFolderThatNeverExistedCountsAsThere();

private:
    FakeMachine *m_machine = nullptr;
};

void TestMedium::aCardIsThereAsLongAsItIsIn_data()
{
    lumi::test::columns<Slot, QString>();
    QTest::newRow("the root of the SD card") << Slot::SD << "";
    QTest::newRow("a folder of the SD card") << Slot::SD << "/dcim/100";
    QTest::newRow("the root of the CF card") << Slot::CF << "";
    QTest::newRow("a folder of the CF card") << Slot::CF << "/dcim";
}

void TestMedium::aCardIsThereAsLongAsItIsIn()
{
    const auto [slot, below] = lumi::test::row<Slot, QString>();
    m_machine->insertCard(slot);
    const QString folder = m_machine->mountPoint(slot) + below;
    QVERIFY(QDir().mkpath(folder));
    const Medium medium(folder);
    QVERIFY(medium.isThere());
    // The disk is the same; only the marker shows the change.
    m_machine->removeCard(slot);
    QVERIFY(!medium.isThere());
    QVERIFY(!Medium(folder).isThere());
    // The card may be another one.
    m_machine->insertCard(slot);
    QVERIFY(!medium.isThere());
    QVERIFY(Medium(folder).isThere());
}

void TestMedium::theOtherSlotDoesNotCount()
{
    m_machine->insertCard(Slot::SD);
    const Medium card(m_machine->sd);
    lumi::CardSlots::look();
    QVERIFY(card.isThere());
    QVERIFY(Medium(m_machine->sd).isThere());
    const QString neighbour = m_machine->cf + QStringLiteral("-photos");
    QVERIFY(QDir().mkpath(neighbour));
    QVERIFY(Medium(neighbour).isThere());
    QVERIFY(!Medium(m_machine->cf).isThere());
}

void TestMedium::aMountPointMayVanish()
{
    m_machine->cf = m_machine->folder.filePath(QStringLiteral("none"));
    const QString folder = m_machine->cf + QStringLiteral("/dcim");
    const Medium medium(folder);
    QVERIFY(!medium.isThere());
    m_machine->insertCard(Slot::CF);
    QVERIFY(Medium(folder).isThere());
    QVERIFY(!medium.isThere());
}

void TestMedium::anotherFileSystemIsAnotherMedium_data()
{
    lumi::test::columns<QString, bool>();
    QTest::newRow("another folder of the same disk") << "other" << true;
    QTest::newRow("a folder of another disk") << "/proc" << false;
    QTest::newRow("the folder is gone") << "none" << false;
}

void TestMedium::anotherFileSystemIsAnotherMedium()
{
    const auto [after, isThere] = lumi::test::row<QString, bool>();
    const QTemporaryDir folder;
    for (const char *name : {"one", "other"}) {
        QVERIFY(QDir(folder.path()).mkdir(QLatin1String(name)));
    }
    const QString link = folder.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(QStringLiteral("one"), link));
    const Medium medium(link);
    QVERIFY(medium.isThere());
    QVERIFY(QFile::remove(link) && QFile::link(after, link));
    QCOMPARE(medium.isThere(), isThere);
}

/// If a user may not enter the folder, the folder itself is looked at.
void TestMedium::aFolderMayBeClosed()
{
    const QTemporaryDir outer;
    QVERIFY(QFile::setPermissions(outer.path(), QFile::Permissions(0x7755)));
    const QString folder = outer.filePath(QStringLiteral("closed"));
    QVERIFY(QDir().mkdir(folder));
    const Medium whileOpen(folder);
    QVERIFY(QFile::setPermissions(folder, {}));
    Medium whileClosed;
    {
        const lumi::test::OrdinaryUser user;
        QVERIFY(::access(QFile::encodeName(folder + QStringLiteral("/.")).constData(), F_OK) != 0);
        QVERIFY(whileOpen.isThere());
        whileClosed = Medium(folder);
        QVERIFY(whileClosed.isThere());
    }
    QVERIFY(QDir().rmdir(folder));
    QVERIFY(!whileClosed.isThere());
}

void TestMedium::aFolderThatNeverExistedCountsAsThere()
{
    const Medium none(QStringLiteral("/no/such/folder"));
    QVERIFY(none.isThere());
    const Medium empty;
    QVERIFY(empty.isThere());
    lumi::CardSlots::look();
    QVERIFY(none.isThere() && empty.isThere());
}

LUMI_TEST(TestMedium)
#include "TestMedium.moc"
