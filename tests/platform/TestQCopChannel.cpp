// SPDX-License-Identifier: MIT
#include "platform/session/QCopChannel.h"
#include "platform/session/QCopEnvelope.h"
#include "platform/session/QCopHub.h"
#include "tests/support/TestMain.h"

#include <QDataStream>
#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

const QCString kChannel = "Test/Channel";

QByteArrayList messages(const QSignalSpy &spy)
{
    QByteArrayList all;
    for (const QList<QVariant> &call : spy) {
        all.append(call.first().toByteArray());
    }
    return all;
}

void deliver()
{
    QCoreApplication::processEvents();
}

/// Connects by name, as forms do.
class Form : public QObject
{
    Q_OBJECT

public:
    QByteArrayList heard;

public Q_SLOTS:

    void cardChannel(const QCString &message, const QByteArray &) { heard.append(message); }
};

} // namespace

class TestQCopChannel : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { deliver(); }

    void nothingArrivesInsideSend();
    void messagesKeepTheirOrder();
    void everyListenerOfTheChannelHearsAndNobodyElse();
    void aListenerDeletedMeanwhileHearsNothing();
    void aListenerMadeMeanwhileHearsItOnce();
    void aListenerDeletedByAnotherHearsNothing();
    void aListenerMadeDuringDeliveryDoesNotHearThatMessage();
    void aListenerMayDeleteItself();
    void registrationLastsAsLongAsTheListener();
    void aMessageSentWhileAnotherIsHeardComesAfter();
    void deliveryGoesOnInNestedLoops();
    void theSignatureFitsConnectsByName();
    void envelopesArriveInOrderWithTheirData();
    void postedMessagesAreNotReportedAsSent();
    void theHubReportsFirstAndLastListeners();
};

void TestQCopChannel::nothingArrivesInsideSend()
{
    const QCopChannel channel(kChannel);
    QSignalSpy spy(&channel, &QCopChannel::received);
    QVERIFY(QCopChannel::send(kChannel, "a()", "data"));
    QCOMPARE(spy.count(), 0);
    deliver();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().at(1).toByteArray(), QByteArray("data"));
}

void TestQCopChannel::messagesKeepTheirOrder()
{
    const QCopChannel channel(kChannel);
    const QSignalSpy spy(&channel, &QCopChannel::received);
    for (const char *message : {"a()", "b()", "a()", "c()"}) {
        QVERIFY(QCopChannel::send(kChannel, message));
    }
    deliver();
    QCOMPARE(messages(spy), QByteArrayList({"a()", "b()", "a()", "c()"}));
}

void TestQCopChannel::everyListenerOfTheChannelHearsAndNobodyElse()
{
    const QCopChannel one(kChannel);
    const QCopChannel two(kChannel);
    const QCopChannel other("Test/Other");
    const QSignalSpy first(&one, &QCopChannel::received);
    const QSignalSpy second(&two, &QCopChannel::received);
    const QSignalSpy third(&other, &QCopChannel::received);
    QVERIFY(QCopChannel::send(kChannel, "a()"));
    deliver();
    QCOMPARE(first.count(), 1);
    QCOMPARE(second.count(), 1);
    QCOMPARE(third.count(), 0);
}

void TestQCopChannel::aListenerDeletedMeanwhileHearsNothing()
{
    auto channel = std::make_unique<QCopChannel>(kChannel);
    int heard = 0;
    connect(channel.get(), &QCopChannel::received, this, [&heard] {
        ++heard;
    });
    QVERIFY(QCopChannel::send(kChannel, "a()"));
    channel.reset();
    deliver();
    QCOMPARE(heard, 0);
}

void TestQCopChannel::aListenerMadeMeanwhileHearsItOnce()
{
    QVERIFY(QCopChannel::send(kChannel, "a()"));
    const QCopChannel channel(kChannel);
    const QSignalSpy spy(&channel, &QCopChannel::received);
    deliver();
    deliver();
    QCOMPARE(spy.count(), 1);
}

void TestQCopChannel::aListenerDeletedByAnotherHearsNothing()
{
    const QCopChannel first(kChannel);
    auto *second = new QCopChannel(kChannel);
    int heard = 0;
    connect(&first, &QCopChannel::received, this, [second] {
        delete second;
    });
    connect(second, &QCopChannel::received, this, [&heard] {
        ++heard;
    });
    QVERIFY(QCopChannel::send(kChannel, "a()"));
    deliver();
    QCOMPARE(heard, 0);
}

void TestQCopChannel::aListenerMadeDuringDeliveryDoesNotHearThatMessage()
{
    const QCopChannel first(kChannel);
    std::unique_ptr<QCopChannel> late;
    QByteArrayList heard;
    connect(&first, &QCopChannel::received, this, [&] {
        if (late == nullptr) {
            late = std::make_unique<QCopChannel>(kChannel);
            connect(late.get(), &QCopChannel::received, this, [&heard](const QCString &message) {
                heard.append(message);
            });
        }
    });
    QVERIFY(QCopChannel::send(kChannel, "a()"));
    QVERIFY(QCopChannel::send(kChannel, "b()"));
    deliver();
    QCOMPARE(heard, QByteArrayList({"b()"}));
}

void TestQCopChannel::aListenerMayDeleteItself()
{
    QPointer<QCopChannel> channel(new QCopChannel(kChannel));
    connect(channel, &QCopChannel::received, this, [channel] {
        delete channel;
    });
    QVERIFY(QCopChannel::send(kChannel, "a()"));
    QVERIFY(QCopChannel::send(kChannel, "b()"));
    deliver();
    QVERIFY(channel.isNull());
    QVERIFY(!QCopChannel::isRegistered(kChannel));
}

void TestQCopChannel::registrationLastsAsLongAsTheListener()
{
    QVERIFY(!QCopChannel::isRegistered(kChannel));
    {
        QObject parent;
        new QCopChannel(kChannel, &parent);
        {
            const QCopChannel second(kChannel);
            QVERIFY(QCopChannel::isRegistered(kChannel));
            QCOMPARE(second.channel(), kChannel);
        }
        QVERIFY(QCopChannel::isRegistered(kChannel));
        QVERIFY(!QCopChannel::isRegistered("Test/Other"));
    }
    QVERIFY(!QCopChannel::isRegistered(kChannel));
}

void TestQCopChannel::aMessageSentWhileAnotherIsHeardComesAfter()
{
    const QCopChannel first(kChannel);
    const QCopChannel second(kChannel);
    QByteArrayList log;
    connect(&first, &QCopChannel::received, this, [&log](const QCString &message) {
        log.append("1" + message);
        if (message == "a()") {
            QVERIFY(QCopChannel::send(kChannel, "b()"));
        }
    });
    connect(&second, &QCopChannel::received, this, [&log](const QCString &message) {
        log.append("2" + message);
    });
    QVERIFY(QCopChannel::send(kChannel, "a()"));
    deliver();
    deliver();
    QCOMPARE(log, QByteArrayList({"1a()", "2a()", "1b()", "2b()"}));
}

void TestQCopChannel::deliveryGoesOnInNestedLoops()
{
    const QCopChannel channel(kChannel);
    QByteArrayList log;
    connect(&channel, &QCopChannel::received, this, [&log](const QCString &message) {
        if (message == "a()") {
            QEventLoop loop;
            QTimer::singleShot(5, &loop, [] {
                QCopChannel::send(kChannel, "c()");
            });
            QTimer::singleShot(30, &loop, &QEventLoop::quit);
            loop.exec();
        }
        log.append(message);
    });
    QVERIFY(QCopChannel::send(kChannel, "a()"));
    QVERIFY(QCopChannel::send(kChannel, "b()"));
    deliver();
    QCOMPARE(log, QByteArrayList({"b()", "c()", "a()"}));
}

void TestQCopChannel::theSignatureFitsConnectsByName()
{
    const QCopChannel channel(kChannel);
    Form form;
    QVERIFY(connect(&channel, SIGNAL(received(const QCString &, const QByteArray &)), &form,
                    SLOT(cardChannel(const QCString &, const QByteArray &))));
    QVERIFY(QCopChannel::send(kChannel, "mtabChanged()"));
    deliver();
    QCOMPARE(form.heard, QByteArrayList({"mtabChanged()"}));
}

void TestQCopChannel::envelopesArriveInOrderWithTheirData()
{
    const QCopChannel channel(kChannel);
    QSignalSpy spy(&channel, &QCopChannel::received);
    {
        QCopEnvelope envelope(kChannel, "setScreenSaverMode(int)");
        envelope << 0;
        deliver();
        QCOMPARE(spy.count(), 0);
    }
    {
        QCopEnvelope envelope(kChannel, "setScreenSaverMode(int)");
        envelope << 300;
    }
    {
        QCopEnvelope envelope(kChannel, "empty()");
    }
    deliver();
    QCOMPARE(spy.count(), 3);
    QCOMPARE(spy.at(0).at(1).toByteArray(), QByteArray("\0\0\0\0", 4));
    QCOMPARE(spy.at(1).at(1).toByteArray(), QByteArray("\0\0\x01\x2C", 4));
    QCOMPARE(messages(spy).last(), QByteArray("empty()"));
    QVERIFY(spy.at(2).at(1).toByteArray().isEmpty());
}

void TestQCopChannel::postedMessagesAreNotReportedAsSent()
{
    QSignalSpy spy(lumi::QCopHub::instance(), &lumi::QCopHub::sentHere);
    const QCopChannel channel(kChannel);
    QSignalSpy heard(&channel, &QCopChannel::received);
    lumi::QCopHub::instance()->post(kChannel, "a()");
    QVERIFY(QCopChannel::send(kChannel, "b()", "x"));
    deliver();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first(),
             QList<QVariant>({QByteArray(kChannel), QByteArray("b()"), QByteArray("x")}));
    QCOMPARE(messages(heard), QByteArrayList({"a()", "b()"}));
}

void TestQCopChannel::theHubReportsFirstAndLastListeners()
{
    QSignalSpy spy(lumi::QCopHub::instance(), &lumi::QCopHub::registrationChanged);
    auto one = std::make_unique<QCopChannel>(kChannel);
    QCOMPARE(spy.count(), 1);
    auto two = std::make_unique<QCopChannel>(kChannel);
    one.reset();
    QCOMPARE(spy.count(), 1);
    two.reset();
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.last().first().toByteArray(), kChannel);
}

LUMI_TEST(TestQCopChannel)
#include "TestQCopChannel.moc"
