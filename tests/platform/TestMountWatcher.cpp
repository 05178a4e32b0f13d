// SPDX-License-Identifier: MIT
#include "platform/cards/CardSlots.h"
#include "platform/cards/MountWatcher.h"
#include "platform/cards/SlotLinks.h"
#include "platform/session/QCopChannel.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

#include <sys/stat.h>

using lumi::MountWatcher;
using lumi::test::FakeMachine;

namespace {

/// A wrong second message would arrive within this time.
constexpr int kQuietMs = 100;

} // namespace

class TestMountWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void eachChangeOfTheMarkerIsOneMessage();
    void aBurstIsOneMessage();
    void otherFilesOnTheCardSendNoMessage();
    void aMarkerThatIsBackAtOnceSendsNoMessage();
    void aSlotFolderMayComeAndGo();
    void aFolderUnderTheOldNameIsWatchedAgain();
    void aLinkThatLeadsElsewhereIsOneMessage();
    void withoutATableOrFoldersNothingHappens();
    void aPipeForATableIsNotRead();
    void theRealTableCanBeWatched();

private:
    FakeMachine *m_machine = nullptr;
    std::unique_ptr<QCopChannel> m_channel;
    std::unique_ptr<QSignalSpy> m_spy;
};

void TestMountWatcher::initTestCase()
{
    // Starts the application's own watcher now, so that it watches other folders than the tests.
    QCoreApplication::processEvents();
}

void TestMountWatcher::init()
{
    m_machine = FakeMachine::install();
    m_channel = std::make_unique<QCopChannel>("QPE/Card");
    m_spy = std::make_unique<QSignalSpy>(m_channel.get(), &QCopChannel::received);
}

void TestMountWatcher::cleanup()
{
    m_spy.reset();
    m_channel.reset();
    Machine::install(nullptr);
}

void TestMountWatcher::eachChangeOfTheMarkerIsOneMessage()
{
    const MountWatcher watcher;
    m_machine->insertCard(Slot::CF);
    QTRY_COMPARE(m_spy->count(), 1);
    QCOMPARE(m_spy->first().first().toByteArray(), QByteArray("mtabChanged()"));
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 1);
    m_machine->removeCard(Slot::CF);
    QTRY_COMPARE(m_spy->count(), 2);
    m_machine->insertCard(Slot::SD);
    QTRY_COMPARE(m_spy->count(), 3);
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 3);
}

void TestMountWatcher::aBurstIsOneMessage()
{
    const MountWatcher watcher;
    m_machine->insertCard(Slot::CF);
    m_machine->insertCard(Slot::SD);
    QTRY_COMPARE(m_spy->count(), 1);
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 1);
}

void TestMountWatcher::otherFilesOnTheCardSendNoMessage()
{
    m_machine->insertCard(Slot::CF);
    const MountWatcher watcher;
    QVERIFY(lumi::test::writeFile(m_machine->cf + QStringLiteral("/a.jpg"), "x"));
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 0);
}

void TestMountWatcher::aMarkerThatIsBackAtOnceSendsNoMessage()
{
    const MountWatcher watcher;
    m_machine->insertCard(Slot::CF);
    m_machine->removeCard(Slot::CF);
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 0);
}

void TestMountWatcher::aSlotFolderMayComeAndGo()
{
    m_machine->cf = m_machine->folder.filePath(QStringLiteral("deep/er/cf"));
    const MountWatcher watcher;
    QVERIFY(QDir().mkpath(m_machine->folder.filePath(QStringLiteral("deep"))));
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 0);
    QVERIFY(QDir().mkpath(m_machine->cf));
    QTRY_COMPARE(m_spy->count(), 1);
    m_machine->removeCard(Slot::CF);
    QTRY_COMPARE(m_spy->count(), 2);
    QVERIFY(QDir(m_machine->cf).removeRecursively());
    QTRY_COMPARE(m_spy->count(), 3);
}

void TestMountWatcher::aFolderUnderTheOldNameIsWatchedAgain()
{
    const MountWatcher watcher;
    const QString away = m_machine->folder.filePath(QStringLiteral("away"));
    QVERIFY(QFile::rename(m_machine->cf, away));
    QVERIFY(QDir().mkpath(m_machine->cf));
    QTRY_COMPARE(m_spy->count(), 1);
    m_machine->removeCard(Slot::CF);
    QTRY_COMPARE(m_spy->count(), 2);
}

void TestMountWatcher::aLinkThatLeadsElsewhereIsOneMessage()
{
    lumi::SlotLinks links;
    const QString card = m_machine->cf;
    m_machine->insertCard(Slot::CF);
    m_machine->cf = lumi::SlotLinks::path(Slot::CF);
    const MountWatcher watcher;
    links.lead(Slot::CF, card);
    QTRY_COMPARE(m_spy->count(), 1);
    QVERIFY(lumi::CardSlots::isPresent(Slot::CF));
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 1);
    links.lead(Slot::CF, QString());
    QTRY_COMPARE(m_spy->count(), 2);
    QVERIFY(!lumi::CardSlots::isPresent(Slot::CF));
}

void TestMountWatcher::withoutATableOrFoldersNothingHappens()
{
    m_machine->cf.clear();
    m_machine->sd.clear();
    m_machine->table = QStringLiteral("/no/such/table");
    const MountWatcher watcher;
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 0);
}

/// Nobody writes to the pipe, so a read of it would never end.
void TestMountWatcher::aPipeForATableIsNotRead()
{
    m_machine->table = m_machine->folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(m_machine->table).constData(), 0600), 0);
    const MountWatcher watcher;
    m_machine->insertCard(Slot::CF);
    QTRY_COMPARE(m_spy->count(), 1);
}

void TestMountWatcher::theRealTableCanBeWatched()
{
    m_machine->table = QStringLiteral("/proc/self/mountinfo");
    const MountWatcher watcher;
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 0);
    m_machine->insertCard(Slot::SD);
    QTRY_COMPARE(m_spy->count(), 1);
}

LUMI_TEST(TestMountWatcher)
#include "TestMountWatcher.moc"
