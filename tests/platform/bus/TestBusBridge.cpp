// SPDX-License-Identifier: MIT
#include "platform/session/QCopChannel.h"
#include "platform/session/QCopEnvelope.h"
#include "platform/session/QCopHub.h"
#include "platform/session/sessionBus.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

namespace {

/// A message that must not arrive would arrive within this time.
constexpr int kQuietMs = 50;

const QCString kChannel = "QPE/Card";
const QString kPath = QStringLiteral("/org/lumivault/QCop");
const QString kInterface = QStringLiteral("org.lumivault.QCop");

/// Waits until the bus has registered this connection. Signals that are sent earlier are lost.
void catchUp(const QDBusConnection &bus)
{
    const QString name = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage reply = bus.call(QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/DBus"), name, QStringLiteral("GetId")));
    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
}

} // namespace

/// Another program on the same bus: a second connection, which has a name of its own.
class OtherProgram : public QObject
{
    Q_OBJECT

public:
    OtherProgram()
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                              QStringLiteral("other program")))
    {
        m_bus.connect(QString(), kPath, kInterface, QStringLiteral("Message"), this,
                      SLOT(note(QDBusMessage)));
        catchUp(m_bus);
    }

    ~OtherProgram() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    void send(const QVariantList &arguments)
    {
        QDBusMessage signal
            = QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("Message"));
        signal.setArguments(arguments);
        QVERIFY(m_bus.send(signal));
    }

    QList<QDBusMessage> heard;

private Q_SLOTS:

    void note(const QDBusMessage &message) { heard.append(message); }

private:
    QDBusConnection m_bus;
};

class TestBusBridge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void whatIsSentReachesOtherPrograms();
    void whatIsSentIsHeardOnceHere();
    void whatIsPostedStaysHere();
    void whatOthersSendArrives_data();
    void whatOthersSendArrives();
    void messagesOfOthersAreNotReportedAsSentHere();
    void messagesOfTheCommandLineArrive();
};

void TestBusBridge::initTestCase()
{
    QVERIFY2(lumi::hasSessionBus(), "run me under dbus-run-session");
    catchUp(QDBusConnection::sessionBus());
}

void TestBusBridge::whatIsSentReachesOtherPrograms()
{
    OtherProgram other;
    {
        QCopEnvelope envelope("QPE/System", "setScreenSaverMode(int)");
        envelope << 300;
    }
    QVERIFY(QCopChannel::send(kChannel, "mtabChanged()"));
    QTRY_COMPARE(other.heard.size(), 2);
    QCOMPARE(other.heard.first().signature(), QStringLiteral("ssay"));
    QCOMPARE(other.heard.first().arguments(),
             QVariantList({QStringLiteral("QPE/System"), QStringLiteral("setScreenSaverMode(int)"),
                           QByteArray("\0\0\x01\x2C", 4)}));
    QCOMPARE(other.heard.last().arguments().first().toString(), QStringLiteral("QPE/Card"));
}

void TestBusBridge::whatIsSentIsHeardOnceHere()
{
    const QCopChannel channel(kChannel);
    const QSignalSpy spy(&channel, &QCopChannel::received);
    OtherProgram other;
    QVERIFY(QCopChannel::send(kChannel, "mtabChanged()"));
    QTRY_COMPARE(other.heard.size(), 1);
    QTest::qWait(kQuietMs);
    QCOMPARE(spy.count(), 1);
}

void TestBusBridge::whatIsPostedStaysHere()
{
    const QCopChannel channel(kChannel);
    const QSignalSpy spy(&channel, &QCopChannel::received);
    OtherProgram other;
    lumi::QCopHub::instance()->post(kChannel, "mtabChanged()");
    QTest::qWait(kQuietMs);
    QCOMPARE(spy.count(), 1);
    QVERIFY(other.heard.isEmpty());
}

void TestBusBridge::whatOthersSendArrives_data()
{
    lumi::test::columns<QVariantList, int, QByteArray>();
    const QVariant channel = QStringLiteral("QPE/Card");
    const QVariant message = QStringLiteral("mtabChanged()");
    const auto row = [](const char *name, const QVariantList &arguments, int count,
                        const QByteArray &data = {}) {
        QTest::newRow(name) << arguments << count << data;
    };
    row("with data", {channel, message, QByteArray("\0x", 2)}, 1, QByteArray("\0x", 2));
    row("without data", {channel, message}, 1);
    row("data of another kind", {channel, message, 7}, 1, "7");
    row("on another channel", {QStringLiteral("QPE/Other"), message}, 0);
    row("without a message", {channel}, 0);
    row("with nothing", {}, 0);
}

void TestBusBridge::whatOthersSendArrives()
{
    const auto [arguments, count, data] = lumi::test::row<QVariantList, int, QByteArray>();
    const QCopChannel channel(kChannel);
    QSignalSpy spy(&channel, &QCopChannel::received);
    OtherProgram other;
    other.send(arguments);
    other.send({QStringLiteral("QPE/Card"), QStringLiteral("the last")});
    QTRY_VERIFY(!spy.isEmpty() && spy.last().at(0).toByteArray() == "the last");
    QCOMPARE(spy.count(), count + 1);
    if (count > 0) {
        QCOMPARE(spy.first().at(0).toByteArray(), QByteArray("mtabChanged()"));
        QCOMPARE(spy.first().at(1).toByteArray(), data);
    }
}

void TestBusBridge::messagesOfOthersAreNotReportedAsSentHere()
{
    const QSignalSpy wishes(lumi::QCopHub::instance(), &lumi::QCopHub::sentHere);
    const QCopChannel channel("QPE/System");
    const QSignalSpy spy(&channel, &QCopChannel::received);
    OtherProgram other;
    other.send({QStringLiteral("QPE/System"), QStringLiteral("setScreenSaverMode(int)"),
                QByteArray("\0\0\0\0", 4)});
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(wishes.count(), 0);
}

void TestBusBridge::messagesOfTheCommandLineArrive()
{
    const QCopChannel channel(kChannel);
    QSignalSpy spy(&channel, &QCopChannel::received);
    QProcess tool;
    tool.start(QStringLiteral("dbus-send"),
               {QStringLiteral("--session"), QStringLiteral("--type=signal"), kPath,
                QStringLiteral("org.lumivault.QCop.Message"), QStringLiteral("string:QPE/Card"),
                QStringLiteral("string:mtabChanged()")});
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.exitCode(), 0);
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().toByteArray(), QByteArray("mtabChanged()"));
}

LUMI_TEST(TestBusBridge)
#include "TestBusBridge.moc"
