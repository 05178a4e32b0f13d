// SPDX-License-Identifier: MIT
// The agent under test is the application's own.
#include "platform/session/QCopEnvelope.h"
#include "platform/session/ScreenSaverAgent.h"
#include "platform/session/sessionBus.h"
#include "tests/support/TestMain.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QTest>

#include <memory>

#include <poll.h>
#include <unistd.h>

namespace {

constexpr int kQuietMs = 50;
constexpr uint kFirstCookie = 7;

void sendMode(int mode)
{
    QCopEnvelope envelope("QPE/System", "setScreenSaverMode(int)");
    envelope << mode;
}

} // namespace

/// The screen saver service of a desktop. A slow one grants nothing until the test says so.
class DesktopService : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    QList<uint> held;
    int calls = 0;
    bool isSlow = false;

    void grantAll(const QDBusConnection &bus)
    {
        for (const QDBusMessage &request : std::as_const(m_waiting)) {
            bus.send(request.createReply(grant()));
        }
        m_waiting.clear();
    }

    void refuseAll(const QDBusConnection &bus)
    {
        for (const QDBusMessage &request : std::as_const(m_waiting)) {
            bus.send(request.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
        }
        m_waiting.clear();
    }

public Q_SLOTS:

    // NOLINTNEXTLINE(readability-identifier-naming): name of the service
    uint Inhibit(const QString &program, const QString &reason)
    {
        ++calls;
        if (program.isEmpty() || reason.isEmpty()) {
            sendErrorReply(QDBusError::InvalidArgs);
            return 0;
        }
        if (isSlow) {
            setDelayedReply(true);
            m_waiting.append(message());
            return 0;
        }
        return grant();
    }

    // NOLINTNEXTLINE(readability-identifier-naming): name of the service
    void UnInhibit(uint cookie) { held.removeOne(cookie); }

private:
    uint grant()
    {
        held.append(++m_lastCookie);
        return m_lastCookie;
    }

    uint m_lastCookie = kFirstCookie;
    QList<QDBusMessage> m_waiting;
};

/// The login manager. A lock is held as long as the descriptor that it returned is open.
class LoginService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    ~LoginService() override { closeOwn(); }

    QString what;
    QString mode;
    int calls = 0;

    bool isHeld() const
    {
        pollfd state{m_own, POLLIN, 0};
        return m_own >= 0 && poll(&state, 1, 0) == 0;
    }

public Q_SLOTS:

    // NOLINTNEXTLINE(readability-identifier-naming): name of the service
    QDBusUnixFileDescriptor Inhibit(const QString &wantedWhat, const QString &, const QString &,
                                    const QString &wantedMode)
    {
        ++calls;
        what = wantedWhat;
        mode = wantedMode;
        closeOwn();
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0) {
            return {};
        }
        m_own = ends[0];
        QDBusUnixFileDescriptor given(ends[1]);
        close(ends[1]);
        return given;
    }

private:
    void closeOwn()
    {
        if (m_own >= 0) {
            close(m_own);
        }
    }

    int m_own = -1;
};

class TestScreenSaverAgent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void thePairOfMessagesHoldsOnce();
    void itCanBeHeldAgain();
    void aWishWithdrawnBeforeTheAnswerIsReleased();
    void otherMessagesAreIgnored();
    void theLoginManagerIsAskedWithoutADesktop();
    void theLoginManagerIsAskedWhenTheDesktopIsSlow();
    void aLateAnswerHoldsUntilTheUsualMode();
    void aLateAnswerIsHandedBackIfNothingIsWanted();
    void aLateRefusalLeavesTheLock();
    void aSlowDesktopIsNotAskedAgain();
    void withoutAnyServiceNothingHappens();
    void aDeletedAgentReleasesTheLock();

private:
    void offerDesktop();
    void offerLogin();

    std::unique_ptr<QDBusConnection> m_bus;
    std::unique_ptr<DesktopService> m_desktop;
    std::unique_ptr<LoginService> m_login;
};

void TestScreenSaverAgent::initTestCase()
{
    QVERIFY2(lumi::hasSessionBus(), "run me under dbus-run-session");
    QCOMPARE(qgetenv("DBUS_SYSTEM_BUS_ADDRESS"), qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    m_bus = std::make_unique<QDBusConnection>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("services")));
    QVERIFY(m_bus->isConnected());
    QCoreApplication::processEvents();
}

void TestScreenSaverAgent::init()
{
    m_desktop = std::make_unique<DesktopService>();
    m_login = std::make_unique<LoginService>();
}

void TestScreenSaverAgent::cleanup()
{
    sendMode(200);
    // A pending answer would disturb the next test.
    m_desktop->grantAll(*m_bus);
    QTRY_VERIFY(m_desktop->held.isEmpty());
    QTRY_VERIFY(!m_login->isHeld());
    m_bus->unregisterService(QStringLiteral("org.freedesktop.ScreenSaver"));
    m_bus->unregisterService(QStringLiteral("org.freedesktop.login1"));
    m_bus->unregisterObject(QStringLiteral("/org/freedesktop/ScreenSaver"));
    m_bus->unregisterObject(QStringLiteral("/org/freedesktop/login1"));
}

void TestScreenSaverAgent::offerDesktop()
{
    QVERIFY(m_bus->registerObject(QStringLiteral("/org/freedesktop/ScreenSaver"), m_desktop.get(),
                                  QDBusConnection::ExportAllSlots));
    QVERIFY(m_bus->registerService(QStringLiteral("org.freedesktop.ScreenSaver")));
}

void TestScreenSaverAgent::offerLogin()
{
    QVERIFY(m_bus->registerObject(QStringLiteral("/org/freedesktop/login1"), m_login.get(),
                                  QDBusConnection::ExportAllSlots));
    QVERIFY(m_bus->registerService(QStringLiteral("org.freedesktop.login1")));
}

void TestScreenSaverAgent::thePairOfMessagesHoldsOnce()
{
    offerDesktop();
    offerLogin();
    sendMode(0);
    sendMode(300);
    QTRY_COMPARE(m_desktop->held.size(), 1);
    sendMode(0);
    QTest::qWait(kQuietMs);
    QCOMPARE(m_desktop->calls, 1);
    QCOMPARE(m_login->calls, 0);
}

void TestScreenSaverAgent::itCanBeHeldAgain()
{
    offerDesktop();
    for (int i = 1; i <= 2; ++i) {
        sendMode(300);
        QTRY_COMPARE(m_desktop->calls, i);
        QTest::qWait(kQuietMs);
        QCOMPARE(m_desktop->held.size(), 1);
        sendMode(200);
        QTRY_VERIFY(m_desktop->held.isEmpty());
    }
}

void TestScreenSaverAgent::aWishWithdrawnBeforeTheAnswerIsReleased()
{
    offerDesktop();
    sendMode(0);
    sendMode(200);
    QTRY_COMPARE(m_desktop->calls, 1);
    QTRY_VERIFY(m_desktop->held.isEmpty());
    sendMode(0);
    sendMode(200);
    sendMode(0);
    QTRY_COMPARE(m_desktop->held.size(), 1);
    QTest::qWait(kQuietMs);
    QCOMPARE(m_desktop->held.size(), 1);
    QCOMPARE(m_desktop->calls, 2);
}

void TestScreenSaverAgent::otherMessagesAreIgnored()
{
    offerDesktop();
    offerLogin();
    sendMode(1);
    sendMode(-1);
    QVERIFY(QCopChannel::send("QPE/System", "setScreenSaverMode(int)"));
    QVERIFY(QCopChannel::send("QPE/System", "setScreenSaverMode(int)", "\1\2"));
    QVERIFY(QCopChannel::send("QPE/System", "other(int)", QByteArray("\0\0\0\0", 4)));
    QVERIFY(QCopChannel::send("QPE/Card", "setScreenSaverMode(int)", QByteArray("\0\0\0\0", 4)));
    QTest::qWait(kQuietMs);
    QCOMPARE(m_desktop->calls, 0);
    QCOMPARE(m_login->calls, 0);
}

void TestScreenSaverAgent::theLoginManagerIsAskedWithoutADesktop()
{
    offerLogin();
    sendMode(0);
    sendMode(300);
    QTRY_COMPARE(m_login->calls, 1);
    QTest::qWait(kQuietMs);
    QVERIFY(m_login->isHeld());
    QCOMPARE(m_login->what, QStringLiteral("idle"));
    QCOMPARE(m_login->mode, QStringLiteral("block"));
    QCOMPARE(m_login->calls, 1);
    sendMode(200);
    QTRY_VERIFY(!m_login->isHeld());
}

void TestScreenSaverAgent::theLoginManagerIsAskedWhenTheDesktopIsSlow()
{
    m_desktop->isSlow = true;
    offerDesktop();
    offerLogin();
    sendMode(0);
    QTRY_VERIFY(m_login->isHeld());
    QTest::qWait(kQuietMs);
    QVERIFY(m_login->isHeld());
    QCOMPARE(m_login->calls, 1);
    QCOMPARE(m_desktop->calls, 1);
}

void TestScreenSaverAgent::aLateAnswerHoldsUntilTheUsualMode()
{
    m_desktop->isSlow = true;
    offerDesktop();
    offerLogin();
    sendMode(0);
    QTRY_VERIFY(m_login->isHeld());
    m_desktop->grantAll(*m_bus);
    QTest::qWait(kQuietMs);
    QCOMPARE(m_desktop->held.size(), 1);
    sendMode(200);
    QTRY_VERIFY(m_desktop->held.isEmpty());
    QTRY_VERIFY(!m_login->isHeld());
}

void TestScreenSaverAgent::aLateAnswerIsHandedBackIfNothingIsWanted()
{
    m_desktop->isSlow = true;
    offerDesktop();
    offerLogin();
    sendMode(0);
    QTRY_VERIFY(m_login->isHeld());
    sendMode(200);
    QTRY_VERIFY(!m_login->isHeld());
    m_desktop->grantAll(*m_bus);
    QCOMPARE(m_desktop->held.size(), 1);
    QTRY_VERIFY(m_desktop->held.isEmpty());
}

void TestScreenSaverAgent::aLateRefusalLeavesTheLock()
{
    m_desktop->isSlow = true;
    offerDesktop();
    offerLogin();
    sendMode(0);
    QTRY_VERIFY(m_login->isHeld());
    m_desktop->refuseAll(*m_bus);
    QTest::qWait(kQuietMs);
    QCOMPARE(m_login->calls, 1);
    QVERIFY(m_login->isHeld());
}

void TestScreenSaverAgent::aSlowDesktopIsNotAskedAgain()
{
    m_desktop->isSlow = true;
    offerDesktop();
    offerLogin();
    for (int i = 1; i <= 2; ++i) {
        sendMode(0);
        QTRY_COMPARE(m_login->calls, i);
        QTRY_VERIFY(m_login->isHeld());
        sendMode(200);
        QTRY_VERIFY(!m_login->isHeld());
    }
    QCOMPARE(m_desktop->calls, 1);
}

void TestScreenSaverAgent::withoutAnyServiceNothingHappens()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    sendMode(0);
    sendMode(300);
    QTest::qWait(kQuietMs);
    // The next request is sent after the answers to the last one.
    offerDesktop();
    QTRY_VERIFY((sendMode(0), m_desktop->held.size() == 1));
}

void TestScreenSaverAgent::aDeletedAgentReleasesTheLock()
{
    offerDesktop();
    auto agent = std::make_unique<lumi::ScreenSaverAgent>();
    sendMode(0);
    QTRY_COMPARE(m_desktop->held.size(), 2);
    QTRY_VERIFY(agent->isHolding());
    agent.reset();
    QTRY_COMPARE(m_desktop->held.size(), 1);
}

LUMI_TEST(TestScreenSaverAgent)
#include "TestScreenSaverAgent.moc"
