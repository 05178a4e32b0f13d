// SPDX-License-Identifier: MIT
#include "platform/cards/CardSlots.h"
#include "platform/cards/DesktopCards.h"
#include "platform/cards/MountWatcher.h"
#include "platform/session/QCopChannel.h"
#include "tests/platform/bus/DiskDouble.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using lumi::CardSlots;
using lumi::test::DiskDouble;

namespace {

/// Time for everything that must not happen, such as a second request to mount.
constexpr int kQuietMs = 900;
/// A change of a card must be reported within this time.
constexpr int kReportMs = 2000;

const QString kCard = QStringLiteral("sdb1");
const QString kOther = QStringLiteral("sdc1");

QString shown(Slot slot)
{
    return QFileInfo(CardSlots::mountPoint(slot)).canonicalFilePath();
}

} // namespace

class TestDesktopCards : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void aCardThatIsMountedAlreadyIsFound();
    void anInsertedCardIsMounted();
    void aCardIsMountedAtTheStart();
    void onePartitionOfADriveIsMounted();
    void theDesktopMayMountFirst();
    void aRefusedMountIsNotTriedAgain();
    void aCardThatTheUserUnmountsStaysUnmounted();
    void aCardPulledWithoutAnUnmountIsGone();
    void aCardWithANewLabelKeepsItsSlot();
    void twoCardsOfOneKindTakeBothSlots();
    void aDriveWithoutAFileSystemIsIgnored();
    void aDriveOfTheSystemIsIgnored();
    void withoutTheServiceTheSlotsAreEmpty();
    void aRestartOfTheServiceKeepsTheSlots();
    void aCardPulledDuringARestartIsGone();
    void aSilentServiceHoldsNothingUp();
    void signalsOfOtherProgramsAreIgnored();
    void aPhoneTakesAFreeSlot();
    void mountPointsThatExistAreLeftAlone();

private:
    void start();
    QString folder(const char *name);

    std::unique_ptr<QDBusConnection> m_bus;
    std::unique_ptr<QDBusConnection> m_laterBus; ///< of a service that has restarted
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<DiskDouble> m_disks;
    std::unique_ptr<QCopChannel> m_channel;
    std::unique_ptr<QSignalSpy> m_spy;
    std::unique_ptr<lumi::DesktopCards> m_cards;
    std::unique_ptr<lumi::MountWatcher> m_watcher;
};

void TestDesktopCards::initTestCase()
{
    QCOMPARE(qgetenv("DBUS_SYSTEM_BUS_ADDRESS"), qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    // The application's own agents start now and see slots that don't follow the desktop.
    lumi::test::FakeMachine::install();
    QCoreApplication::processEvents();
    m_bus = std::make_unique<QDBusConnection>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("services")));
    m_laterBus = std::make_unique<QDBusConnection>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("later")));
    QVERIFY(m_bus->isConnected() && m_laterBus->isConnected());
}

void TestDesktopCards::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    m_home = std::make_unique<QTemporaryDir>();
    const QString profile = m_home->filePath(QStringLiteral("machine.ini"));
    QVERIFY(lumi::test::writeFile(profile, "[Mounts]\nCF=none\nSD=none\n"));
    qputenv("LUMIVAULT_MACHINE", profile.toLocal8Bit());
    Machine::install(nullptr);
    m_disks = std::make_unique<DiskDouble>(*m_bus);
    m_channel = std::make_unique<QCopChannel>("QPE/Card");
    m_spy = std::make_unique<QSignalSpy>(m_channel.get(), &QCopChannel::received);
}

void TestDesktopCards::cleanup()
{
    m_watcher.reset();
    m_cards.reset();
    m_spy.reset();
    m_channel.reset();
    m_disks.reset();
    QCoreApplication::processEvents();
    Machine::install(nullptr);
}

void TestDesktopCards::start()
{
    m_cards = std::make_unique<lumi::DesktopCards>();
    m_watcher = std::make_unique<lumi::MountWatcher>();
    QVERIFY(!CardSlots::isPresent(Slot::CF));
    QVERIFY(!CardSlots::isPresent(Slot::SD));
}

QString TestDesktopCards::folder(const char *name)
{
    QString path
        = QFileInfo(m_home->path()).canonicalFilePath() + QLatin1Char('/') + QLatin1String(name);
    QDir().mkpath(path);
    return path;
}

void TestDesktopCards::aCardThatIsMountedAlreadyIsFound()
{
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    start();
    QTRY_COMPARE_WITH_TIMEOUT(m_spy->count(), 1, kReportMs);
    QVERIFY(CardSlots::isPresent(Slot::SD));
    QCOMPARE(shown(Slot::SD), folder("one"));
    QVERIFY(!CardSlots::isPresent(Slot::CF));
    QTest::qWait(kQuietMs);
    QVERIFY(m_disks->mountCalls.isEmpty());
    QCOMPARE(m_spy->count(), 1);
}

void TestDesktopCards::anInsertedCardIsMounted()
{
    m_disks->appear();
    start();
    QTest::qWait(kQuietMs);
    m_disks->mountFolder = folder("one");
    m_disks->addSdCard(kCard, {});
    QTRY_VERIFY_WITH_TIMEOUT(m_spy->count() == 1, kReportMs);
    QCOMPARE(shown(Slot::SD), folder("one"));
    QCOMPARE(m_disks->mountCalls.size(), 1);
    const QDBusMessage call = m_disks->mountCalls.first();
    QCOMPARE(call.path(), DiskDouble::devicePath(kCard));
    QCOMPARE(qdbus_cast<QVariantMap>(call.arguments().value(0)),
             (QVariantMap{{QStringLiteral("auth.no_user_interaction"), true}}));
}

void TestDesktopCards::aCardIsMountedAtTheStart()
{
    m_disks->mountFolder = folder("one");
    m_disks->addSdCard(kCard, {});
    m_disks->appear();
    start();
    QTRY_COMPARE_WITH_TIMEOUT(shown(Slot::SD), folder("one"), kReportMs);
}

void TestDesktopCards::onePartitionOfADriveIsMounted()
{
    m_disks->appear();
    start();
    m_disks->addSdCard(kCard, {});
    m_disks->addFileSystem(QStringLiteral("sdb2"), kCard, {});
    QTRY_COMPARE(m_disks->mountCalls.size(), 1);
    QCOMPARE(m_disks->mountCalls.first().path(), DiskDouble::devicePath(kCard));
    QTest::qWait(kQuietMs);
    QCOMPARE(m_disks->mountCalls.size(), 1);
}

void TestDesktopCards::theDesktopMayMountFirst()
{
    m_disks->appear();
    start();
    m_disks->addSdCard(kCard, {});
    QTest::qWait(100);
    m_disks->setFolders(kCard, {folder("one")});
    QTRY_COMPARE(shown(Slot::SD), folder("one"));
    QTest::qWait(kQuietMs);
    QVERIFY(m_disks->mountCalls.isEmpty());
}

void TestDesktopCards::aRefusedMountIsNotTriedAgain()
{
    m_disks->appear();
    start();
    m_disks->addSdCard(kCard, {});
    QTRY_COMPARE(m_disks->mountCalls.size(), 1);
    m_disks->setProperty(kCard, QStringLiteral("IdLabel"), QStringLiteral("NEW"));
    QTest::qWait(kQuietMs);
    QCOMPARE(m_disks->mountCalls.size(), 1);
    QCOMPARE(m_spy->count(), 0);
    // The same card again is a new card.
    m_disks->remove(kCard);
    m_disks->addSdCard(kCard, {});
    QTRY_COMPARE(m_disks->mountCalls.size(), 2);
}

void TestDesktopCards::aCardThatTheUserUnmountsStaysUnmounted()
{
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    start();
    QTRY_VERIFY(CardSlots::isPresent(Slot::SD));
    m_disks->setFolders(kCard, {});
    QTRY_VERIFY(!CardSlots::isPresent(Slot::SD));
    QTest::qWait(kQuietMs);
    QVERIFY(m_disks->mountCalls.isEmpty());
    m_disks->setFolders(kCard, {folder("one")});
    QTRY_VERIFY(CardSlots::isPresent(Slot::SD));
}

void TestDesktopCards::aCardPulledWithoutAnUnmountIsGone()
{
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    start();
    QTRY_COMPARE(m_spy->count(), 1);
    const unsigned before = CardSlots::generation(Slot::SD);
    m_disks->remove(kCard);
    QTRY_VERIFY_WITH_TIMEOUT(m_spy->count() == 2, kReportMs);
    QVERIFY(!CardSlots::isPresent(Slot::SD));
    QVERIFY(CardSlots::generation(Slot::SD) != before);
    QVERIFY2(QFileInfo::exists(folder("one")), "only the link is removed");
}

void TestDesktopCards::aCardWithANewLabelKeepsItsSlot()
{
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->addSdCard(kOther, {folder("other")});
    m_disks->appear();
    start();
    QTRY_COMPARE(m_spy->count(), 1);
    QCOMPARE(shown(Slot::SD), folder("one"));
    const unsigned before = CardSlots::generation(Slot::SD);
    m_disks->setProperty(kCard, QStringLiteral("IdLabel"), QStringLiteral("NEW"));
    QTest::qWait(kQuietMs);
    QCOMPARE(CardSlots::generation(Slot::SD), before);
    QCOMPARE(m_spy->count(), 1);
    // The desktop names the folder after the label.
    m_disks->setFolders(kCard, {folder("NEW")});
    QTRY_COMPARE(m_spy->count(), 2);
    QCOMPARE(shown(Slot::SD), folder("NEW"));
    QCOMPARE(shown(Slot::CF), folder("other"));
}

void TestDesktopCards::twoCardsOfOneKindTakeBothSlots()
{
    m_disks->appear();
    start();
    m_disks->addSdCard(kOther, {folder("first")});
    QTRY_COMPARE(shown(Slot::SD), folder("first"));
    m_disks->addSdCard(kCard, {folder("second")});
    QTRY_COMPARE(shown(Slot::CF), folder("second"));
    QCOMPARE(shown(Slot::SD), folder("first"));
    // Its kind's slot gets free, but it stays where it is.
    m_disks->remove(kOther);
    QTRY_VERIFY(!CardSlots::isPresent(Slot::SD));
    QCOMPARE(shown(Slot::CF), folder("second"));
}

void TestDesktopCards::aDriveWithoutAFileSystemIsIgnored()
{
    m_disks->appear();
    start();
    m_disks->addDrive(kCard, {{QStringLiteral("Media"), QStringLiteral("flash_sd")}});
    m_disks->addDevice(kCard, kCard);
    QTest::qWait(kQuietMs);
    QVERIFY(m_disks->mountCalls.isEmpty());
    QCOMPARE(m_spy->count(), 0);
    // Until it is formatted.
    m_disks->mountFolder = folder("one");
    m_disks->addFileSystem(kCard, kCard, {});
    QTRY_COMPARE(shown(Slot::SD), folder("one"));
}

void TestDesktopCards::aDriveOfTheSystemIsIgnored()
{
    const QList<lumi::DiskConfiguration> lines{{QStringLiteral("fstab"), {}}};
    m_disks->addDrive(kCard, {{QStringLiteral("Media"), QStringLiteral("flash_sd")}});
    m_disks->addFileSystem(kCard, kCard, {folder("one")});
    m_disks->addDevice(QStringLiteral("sdb2"), kCard,
                       {{QStringLiteral("Configuration"), QVariant::fromValue(lines)}});
    m_disks->addSdCard(kOther, {folder("other")});
    m_disks->appear();
    start();
    QTRY_COMPARE(shown(Slot::SD), folder("other"));
    QVERIFY(!CardSlots::isPresent(Slot::CF));
}

void TestDesktopCards::withoutTheServiceTheSlotsAreEmpty()
{
    start();
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 0);
    QVERIFY(QFileInfo::exists(CardSlots::mountPoint(Slot::SD) + QStringLiteral("/NotAvailable")));
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    QTRY_COMPARE(shown(Slot::SD), folder("one"));
}

/// For example while the system installs a newer service.
void TestDesktopCards::aRestartOfTheServiceKeepsTheSlots()
{
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    start();
    QTRY_COMPARE(m_spy->count(), 1);
    m_disks->vanish();
    QTest::qWait(kQuietMs);
    m_disks = std::make_unique<DiskDouble>(*m_laterBus);
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 1);
    QCOMPARE(shown(Slot::SD), folder("one"));
    m_disks->remove(kCard);
    QTRY_COMPARE(m_spy->count(), 2);
    QVERIFY(!CardSlots::isPresent(Slot::SD));
}

void TestDesktopCards::aCardPulledDuringARestartIsGone()
{
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    start();
    QTRY_COMPARE(m_spy->count(), 1);
    m_disks = std::make_unique<DiskDouble>(*m_laterBus);
    m_disks->appear();
    QTRY_COMPARE(m_spy->count(), 2);
    QVERIFY(!CardSlots::isPresent(Slot::SD));
}

void TestDesktopCards::aSilentServiceHoldsNothingUp()
{
    constexpr int kShortMs = 2000; // a call that waits takes 25 s
    m_disks->isSilent = true;
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    QElapsedTimer timer;
    timer.start();
    start();
    QVERIFY(timer.elapsed() < kShortMs);
    QTest::qWait(kQuietMs);
    QCOMPARE(m_spy->count(), 0);
}

void TestDesktopCards::signalsOfOtherProgramsAreIgnored()
{
    m_disks->appear();
    start();
    QTest::qWait(kQuietMs);
    const QString name = QStringLiteral("stranger");
    DiskDouble stranger(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name));
    stranger.addSdCard(kCard, {folder("one")});
    QTest::qWait(kQuietMs);
    QVERIFY(!CardSlots::isPresent(Slot::SD));
    QDBusConnection::disconnectFromBus(name);
}

void TestDesktopCards::aPhoneTakesAFreeSlot()
{
    const QString mounts = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/gvfs");
    const QString phone = mounts + QStringLiteral("/mtp:host=Phone_1");
    const auto tell = [this](const char *change) {
        m_bus->send(QDBusMessage::createSignal(QStringLiteral("/org/gtk/vfs/mounttracker"),
                                               QStringLiteral("org.gtk.vfs.MountTracker"),
                                               QLatin1String(change)));
    };
    m_disks->addDrive(kCard, {{QStringLiteral("Media"), QStringLiteral("flash_cf")}});
    m_disks->addFileSystem(kCard, kCard, {folder("one")});
    m_disks->appear();
    start();
    QTRY_COMPARE(shown(Slot::CF), folder("one"));
    QVERIFY(QDir().mkpath(mounts + QStringLiteral("/smb-share:server=disk")));
    tell("Mounted");
    QTest::qWait(kQuietMs);
    QVERIFY(!CardSlots::isPresent(Slot::SD));
    QVERIFY(QDir().mkpath(phone));
    tell("Mounted");
    QTRY_COMPARE(shown(Slot::SD), QFileInfo(phone).canonicalFilePath());
    QVERIFY(CardSlots::isPresent(Slot::SD));
    QVERIFY(QDir().rmdir(phone));
    tell("Unmounted");
    QTRY_COMPARE(m_spy->count(), 3);
    QVERIFY(!CardSlots::isPresent(Slot::SD));
    // A camera, seen before the program was started.
    QVERIFY(QDir().mkpath(mounts + QStringLiteral("/gphoto2:host=Camera")));
    m_cards.reset();
    m_cards = std::make_unique<lumi::DesktopCards>();
    QTRY_VERIFY(CardSlots::isPresent(Slot::SD) && CardSlots::isPresent(Slot::CF));
    QVERIFY(QDir(mounts).removeRecursively());
}

void TestDesktopCards::mountPointsThatExistAreLeftAlone()
{
    QVERIFY(QDir().mkpath(m_home->filePath(QStringLiteral("none"))));
    Machine::install(nullptr);
    m_disks->addSdCard(kCard, {folder("one")});
    m_disks->appear();
    const lumi::DesktopCards cards;
    QTest::qWait(kQuietMs);
    QCOMPARE(CardSlots::mountPoint(Slot::SD), m_home->filePath(QStringLiteral("none")));
    QVERIFY(!QFileInfo::exists(lumi::SlotLinks::path(Slot::SD)));
}

LUMI_TEST(TestDesktopCards)
#include "TestDesktopCards.moc"
