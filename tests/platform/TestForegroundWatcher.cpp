// SPDX-License-Identifier: MIT
#include "platform/session/ForegroundWatcher.h"
#include "platform/session/QCopChannel.h"
#include "tests/support/TestMain.h"

#include <QDataStream>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QRasterWindow>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using lumi::ForegroundWatcher;

namespace {

constexpr int kLongMs = ForegroundWatcher::kDelayMs * 6 / 5;
constexpr int kShortMs = ForegroundWatcher::kDelayMs / 5;
constexpr int kManyTimes = 100;

} // namespace

class TestForegroundWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void goingToTheBackgroundIsReportedOnce();
    void theReportComesAfterTheDelay();
    void aShortAbsenceIsNotReported();
    void aProgramThatWasNeverInFrontReportsNothing();
    void afterComingBackItIsReportedAgain();
    void theApplicationsStateIsFollowed();
    void aMinimisedWindowIsNoOtherProgram();

private:
    std::unique_ptr<ForegroundWatcher> m_watcher;
    std::unique_ptr<QCopChannel> m_channel;
    std::unique_ptr<QSignalSpy> m_spy;
};

void TestForegroundWatcher::init()
{
    QVERIFY2(QGuiApplication::applicationState() != Qt::ApplicationActive,
             "these tests need a program without windows");
    m_watcher = std::make_unique<ForegroundWatcher>();
    m_channel = std::make_unique<QCopChannel>("QPE/System");
    m_spy = std::make_unique<QSignalSpy>(m_channel.get(), &QCopChannel::received);
}

void TestForegroundWatcher::cleanup()
{
    m_watcher.reset();
    m_spy.reset();
    m_channel.reset();
}

void TestForegroundWatcher::goingToTheBackgroundIsReportedOnce()
{
    m_watcher->stateChanged(Qt::ApplicationActive);
    m_watcher->stateChanged(Qt::ApplicationInactive);
    m_watcher->stateChanged(Qt::ApplicationHidden);
    QTRY_COMPARE(m_spy->count(), 1);
    QTest::qWait(kLongMs);
    QCOMPARE(m_spy->count(), 1);
    QCOMPARE(m_spy->first().first().toByteArray(), QByteArray("appForeground(QString)"));
    QDataStream stream(m_spy->first().at(1).toByteArray());
    QString name;
    stream >> name;
    QCOMPARE(stream.status(), QDataStream::Ok);
}

void TestForegroundWatcher::theReportComesAfterTheDelay()
{
    m_watcher->stateChanged(Qt::ApplicationActive);
    m_watcher->stateChanged(Qt::ApplicationInactive);
    QElapsedTimer timer;
    timer.start();
    // Further changes in the background don't delay the message.
    for (int i = 0; i < kManyTimes && m_spy->isEmpty(); ++i) {
        m_watcher->stateChanged(i % 2 == 0 ? Qt::ApplicationSuspended : Qt::ApplicationInactive);
        QTest::qWait(kShortMs);
    }
    QCOMPARE(m_spy->count(), 1);
    // Qt's coarse timers may fire 5 percent early.
    QVERIFY(timer.elapsed() >= ForegroundWatcher::kDelayMs * 9 / 10);
}

void TestForegroundWatcher::aShortAbsenceIsNotReported()
{
    m_watcher->stateChanged(Qt::ApplicationActive);
    for (int i = 0; i < 3; ++i) {
        m_watcher->stateChanged(Qt::ApplicationInactive);
        QCoreApplication::processEvents();
        m_watcher->stateChanged(Qt::ApplicationActive);
    }
    QTest::qWait(kLongMs);
    QCOMPARE(m_spy->count(), 0);
}

void TestForegroundWatcher::aProgramThatWasNeverInFrontReportsNothing()
{
    m_watcher->stateChanged(Qt::ApplicationInactive);
    m_watcher->stateChanged(Qt::ApplicationHidden);
    QTest::qWait(kLongMs);
    QCOMPARE(m_spy->count(), 0);
}

void TestForegroundWatcher::afterComingBackItIsReportedAgain()
{
    for (int i = 1; i <= 2; ++i) {
        m_watcher->stateChanged(Qt::ApplicationActive);
        m_watcher->stateChanged(Qt::ApplicationInactive);
        QTRY_COMPARE(m_spy->count(), i);
    }
    m_watcher->stateChanged(Qt::ApplicationHidden);
    QTest::qWait(kLongMs);
    QCOMPARE(m_spy->count(), 2);
}

void TestForegroundWatcher::aMinimisedWindowIsNoOtherProgram()
{
    QRasterWindow window;
    window.setFlag(Qt::WindowDoesNotAcceptFocus);
    window.showMinimized();
    QCoreApplication::processEvents();
    m_watcher->stateChanged(Qt::ApplicationActive);
    m_watcher->stateChanged(Qt::ApplicationInactive);
    QTest::qWait(kLongMs);
    QCOMPARE(m_spy->count(), 0);
    window.hide();
    QTRY_COMPARE(m_spy->count(), 1);
}

void TestForegroundWatcher::theApplicationsStateIsFollowed()
{
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    // The application's own agent hears the same signal.
    QTRY_VERIFY(m_spy->count() >= 1);
}

LUMI_TEST(TestForegroundWatcher)
#include "TestForegroundWatcher.moc"
