// SPDX-License-Identifier: MIT
#include "platform/power/PowerWatcher.h"
#include "platform/session/QCopChannel.h"
#include "platform/session/sessionBus.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr int kQuietMs = 50;

/// The signal of the power daemon. It is sent on the connection on which the watcher listens, so
/// that the bus has registered the listener before.
void signalChange()
{
    QDBusMessage signal = QDBusMessage::createSignal(
        QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
    signal << QStringLiteral("org.freedesktop.UPower.Device") << QVariantMap() << QStringList();
    QVERIFY(QDBusConnection::systemBus().send(signal));
}

} // namespace

class TestPowerDaemon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void init() { m_machine = lumi::test::FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void aSignalMakesTheWatcherReadTheFigures();
    void figuresAreNotReadWithoutListeners();

private:
    lumi::test::FakeMachine *m_machine = nullptr;
};

void TestPowerDaemon::initTestCase()
{
    QVERIFY2(lumi::hasSessionBus(), "run me under dbus-run-session");
    QCOMPARE(qgetenv("DBUS_SYSTEM_BUS_ADDRESS"), qgetenv("DBUS_SESSION_BUS_ADDRESS"));
}

void TestPowerDaemon::aSignalMakesTheWatcherReadTheFigures()
{
    // Tests the application's own watcher. Its timer is too slow to interfere.
    QCoreApplication::processEvents();
    const QCopChannel channel("QPE/System");
    QSignalSpy spy(&channel, &QCopChannel::received);
    signalChange();
    QTest::qWait(kQuietMs);
    QCOMPARE(spy.count(), 0);
    m_machine->powerStatus = PowerStatus(PowerStatus::Offline, 9);
    signalChange();
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().toByteArray(), QByteArray("batteryChanged()"));
}

void TestPowerDaemon::figuresAreNotReadWithoutListeners()
{
    const lumi::PowerWatcher watcher;
    {
        const QCopChannel channel("QPE/System");
        QVERIFY(watcher.isActive());
    }
    QVERIFY(!watcher.isActive());
    m_machine->powerStatus = PowerStatus(PowerStatus::Offline, 8);
    signalChange();
    QTest::qWait(kQuietMs);
    // A new listener starts from the present figures.
    const QCopChannel channel("QPE/System");
    const QSignalSpy spy(&channel, &QCopChannel::received);
    signalChange();
    QTest::qWait(kQuietMs);
    QCOMPARE(spy.count(), 0);
}

LUMI_TEST(TestPowerDaemon)
#include "TestPowerDaemon.moc"
