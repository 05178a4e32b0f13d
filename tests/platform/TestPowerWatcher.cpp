// SPDX-License-Identifier: MIT
#include "platform/power/PowerWatcher.h"
#include "platform/session/QCopChannel.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using lumi::PowerWatcher;
using lumi::test::FakeMachine;

namespace {

constexpr int kShortMs = 5;
/// Much longer than the watcher's interval.
constexpr int kQuietMs = 100;

} // namespace

class TestPowerWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_machine = FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void looksOnlyWhileSomebodyListens();
    void aListenerThatIsThereAlreadyCounts();
    void aChangeIsOneMessage();

private:
    FakeMachine *m_machine = nullptr;
};

void TestPowerWatcher::looksOnlyWhileSomebodyListens()
{
    const PowerWatcher watcher;
    QVERIFY(!watcher.isActive());
    const QCopChannel other("QPE/Card");
    QVERIFY(!watcher.isActive());
    {
        const QCopChannel one("QPE/System");
        QVERIFY(watcher.isActive());
        const QCopChannel two("QPE/System");
        QVERIFY(watcher.isActive());
    }
    QVERIFY(!watcher.isActive());
}

void TestPowerWatcher::aListenerThatIsThereAlreadyCounts()
{
    const QCopChannel channel("QPE/System");
    const PowerWatcher watcher;
    QVERIFY(watcher.isActive());
}

void TestPowerWatcher::aChangeIsOneMessage()
{
    const PowerWatcher watcher(nullptr, kShortMs);
    m_machine->powerStatus = PowerStatus(PowerStatus::Online, 40);
    const QCopChannel channel("QPE/System");
    QSignalSpy spy(&channel, &QCopChannel::received);
    QTest::qWait(kQuietMs);
    QCOMPARE(spy.count(), 0);
    m_machine->powerStatus = PowerStatus(PowerStatus::Online, 39);
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().toByteArray(), QByteArray("batteryChanged()"));
    m_machine->powerStatus = PowerStatus(PowerStatus::Offline, 39);
    QTRY_COMPARE(spy.count(), 2);
    QTest::qWait(kQuietMs);
    QCOMPARE(spy.count(), 2);
}

LUMI_TEST(TestPowerWatcher)
#include "TestPowerWatcher.moc"
