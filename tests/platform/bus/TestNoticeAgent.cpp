// SPDX-License-Identifier: MIT
#include "platform/session/NoticeAgent.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDBusConnection>
#include <QTest>
#include <QWidget>

#include <memory>

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
/// A notice that must not be shown would be shown within this time.
constexpr int kQuietMs = 200;

} // namespace

/// Stands in for the desktop's notification service.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList shown;
    QVariantMap hints;

public Q_SLOTS:

    // NOLINTNEXTLINE(readability-identifier-naming): name of the service
    uint Notify(const QString &program, uint, const QString &, const QString &, const QString &body,
                const QStringList &, const QVariantMap &given, int)
    {
        shown.append(program + QStringLiteral(": ") + body);
        hints = given;
        return 1;
    }
};

class TestNoticeAgent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void aNoticeInTheBackgroundIsShown();
    void aNoticeInTheForegroundIsNotShown();
    void withoutTheServiceNothingHappens();

private:
    std::unique_ptr<QDBusConnection> m_bus;
    NotificationService m_service;
};

void TestNoticeAgent::initTestCase()
{
    lumi::test::FakeMachine::install();
    // Starts the application's own agent, which the tests use.
    QCoreApplication::processEvents();
    m_bus = std::make_unique<QDBusConnection>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("services")));
    QVERIFY(m_bus->registerObject(kPath, &m_service, QDBusConnection::ExportAllSlots));
}

void TestNoticeAgent::init()
{
    m_service.shown.clear();
    QVERIFY(m_bus->registerService(kService));
}

void TestNoticeAgent::cleanup()
{
    m_bus->unregisterService(kService);
}

void TestNoticeAgent::aNoticeInTheBackgroundIsShown()
{
    QCOMPARE(QGuiApplication::applicationState(), Qt::ApplicationInactive);
    lumi::NoticeAgent::post(QStringLiteral("3 photos in <a> & \u00e4"));
    QTRY_COMPARE(m_service.shown,
                 QStringList{QStringLiteral("Lumi Vault: 3 photos in &lt;a&gt; &amp; \u00e4")});
    QCOMPARE(m_service.hints.value(QStringLiteral("desktop-entry")).toString(),
             QStringLiteral("lumivault"));
}

void TestNoticeAgent::aNoticeInTheForegroundIsNotShown()
{
    QWidget window;
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_COMPARE(QGuiApplication::applicationState(), Qt::ApplicationActive);
    lumi::NoticeAgent::post(QStringLiteral("3 photos"));
    QTest::qWait(kQuietMs);
    QVERIFY(m_service.shown.isEmpty());
}

void TestNoticeAgent::withoutTheServiceNothingHappens()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    m_bus->unregisterService(kService);
    lumi::NoticeAgent::post(QStringLiteral("3 photos"));
    QTest::qWait(kQuietMs);
    QVERIFY(m_service.shown.isEmpty());
}

LUMI_TEST(TestNoticeAgent)
#include "TestNoticeAgent.moc"
