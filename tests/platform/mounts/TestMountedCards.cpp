// SPDX-License-Identifier: MIT
// Runs in a mount namespace of its own.
#include "platform/cards/CardSlots.h"
#include "platform/cards/MountWatcher.h"
#include "platform/session/QCopChannel.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <memory>

#include <sys/mount.h>

using lumi::test::FakeMachine;

namespace {

/// A wrong second message would arrive within this time.
constexpr int kQuietMs = 100;

} // namespace

class TestMountedCards : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void aMountAndAnUnmountSendOneMessageEach();
    void aMountElsewhereSendsNoMessage();
    void exchangeInOneBurstIsAnotherCard_data();
    void exchangeInOneBurstIsAnotherCard();
    void aReadOnlyMountIsACard();

private:
    FakeMachine *m_machine = nullptr;
};

void TestMountedCards::initTestCase()
{
    m_machine = FakeMachine::install();
    m_machine->table = QStringLiteral("/proc/self/mountinfo");
    // The application's own watcher starts with the event loop.
    QCoreApplication::processEvents();
}

void TestMountedCards::cleanupTestCase()
{
    Machine::install(nullptr);
}

/// Mounts a file system over a slot's folder while it lives, as for a card.
void TestMountedCards::aMountAndAnUnmountSendOneMessageEach()
{
    const QByteArray folder = QFile::encodeName(m_machine->cf);
    const QCopChannel channel("QPE/Card");
    const QSignalSpy spy(&channel, &QCopChannel::received);
    QCOMPARE(::mount("tmpfs", folder.constData(), "tmpfs", 0, "size=64k"), 0);
    QTRY_COMPARE(spy.count(), 1);
    // With a marker on the mount, only the mount table shows the unmount.
    QFile marker(QFile::decodeName(folder) + QStringLiteral("/NotAvailable"));
    QVERIFY(marker.open(QIODevice::WriteOnly));
    marker.close();
    QTRY_COMPARE(spy.count(), 2);
    QCOMPARE(::umount2(folder.constData(), MNT_DETACH), 0);
    QTRY_COMPARE(spy.count(), 3);
    QTest::qWait(kQuietMs);
    QCOMPARE(spy.count(), 3);
}

void TestMountedCards::aMountElsewhereSendsNoMessage()
{
    const QString folder = m_machine->folder.filePath(QStringLiteral("elsewhere"));
    QVERIFY(QDir().mkpath(folder));
    const QByteArray name = QFile::encodeName(folder);
    const QCopChannel channel("QPE/Card");
    const QSignalSpy spy(&channel, &QCopChannel::received);
    QCOMPARE(::mount("tmpfs", name.constData(), "tmpfs", 0, "size=64k"), 0);
    QTest::qWait(kQuietMs);
    QCOMPARE(::umount2(name.constData(), MNT_DETACH), 0);
    QTest::qWait(kQuietMs);
    QCOMPARE(spy.count(), 0);
}

void TestMountedCards::exchangeInOneBurstIsAnotherCard_data()
{
    lumi::test::columns<bool>();
    QTest::newRow("at the slot's path") << false;
    QTest::newRow("behind a link") << true;
}

/// Nobody looks between the unmount and the next mount. Both cards have the same device.
void TestMountedCards::exchangeInOneBurstIsAnotherCard()
{
    const auto [isBehindLink] = lumi::test::row<bool>();
    const QByteArray folder = QFile::encodeName(m_machine->sd);
    std::unique_ptr<lumi::MountWatcher> linkWatcher; // the application's own one ignores the link
    if (isBehindLink) {
        const QString link = m_machine->folder.filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(m_machine->sd, link));
        m_machine->sd = link;
        lumi::CardSlots::look();
        linkWatcher = std::make_unique<lumi::MountWatcher>();
    }
    const QCopChannel channel("QPE/Card");
    const QSignalSpy spy(&channel, &QCopChannel::received);
    QCOMPARE(::mount("tmpfs", folder.constData(), "tmpfs", 0, "size=64k"), 0);
    QTRY_COMPARE(spy.count(), 1);
    const unsigned first = lumi::CardSlots::generation(Slot::SD);
    QCOMPARE(::umount2(folder.constData(), 0), 0);
    QCOMPARE(::mount("tmpfs", folder.constData(), "tmpfs", 0, "size=64k"), 0);
    QVERIFY(lumi::CardSlots::generation(Slot::SD) != first);
    QTRY_COMPARE(spy.count(), 2);
    QCOMPARE(::umount2(folder.constData(), 0), 0);
    QTRY_COMPARE(spy.count(), 3);
}

void TestMountedCards::aReadOnlyMountIsACard()
{
    const QByteArray folder = QFile::encodeName(m_machine->cf);
    QCOMPARE(::mount("tmpfs", folder.constData(), "tmpfs", MS_RDONLY, "size=64k"), 0);
    QVERIFY(lumi::CardSlots::isPresent(Slot::CF));
    QCOMPARE(::umount2(folder.constData(), 0), 0);
    QVERIFY(!lumi::CardSlots::isPresent(Slot::CF));
}

LUMI_TEST(TestMountedCards)
#include "TestMountedCards.moc"
