// SPDX-License-Identifier: MIT
#include "platform/cards/diskObjects.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QByteArrayList>
#include <QTest>

using lumi::DiskObjects;
using lumi::RemovableDrive;

namespace {

const QDBusObjectPath kDrivePath(QStringLiteral("/drive"));
const QDBusObjectPath kFirst(QStringLiteral("/a1"));
const QDBusObjectPath kSecond(QStringLiteral("/a2"));

QVariantMap plainBlock()
{
    return {{QStringLiteral("Drive"), QVariant::fromValue(kDrivePath)},
            {QStringLiteral("HintAuto"), true}};
}

/// Names separated by blanks.
QStringList names(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

QVariantMap mountedAt(const QByteArrayList &folders)
{
    return {{QStringLiteral("MountPoints"), QVariant::fromValue(folders)}};
}

/// One drive with one file system.
DiskObjects oneDrive(const QVariantMap &drive, const QVariantMap &fileSystem)
{
    return {{kDrivePath, {{QStringLiteral("org.freedesktop.UDisks2.Drive"), drive}}},
            {kFirst,
             {{QStringLiteral("org.freedesktop.UDisks2.Block"), plainBlock()},
              {QStringLiteral("org.freedesktop.UDisks2.Filesystem"), fileSystem}}}};
}

DiskObjects sdCard(const QByteArrayList &folders)
{
    return oneDrive({{QStringLiteral("Media"), QStringLiteral("flash_sd")}}, mountedAt(folders));
}

} // namespace

class TestDiskObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kindOfADrive_data();
    void kindOfADrive();
    void partsOfTheSystemHideADrive_data();
    void partsOfTheSystemHideADrive();
    void devicesAreMountedOrNot();
    void aDeviceWithoutItsDriveIsNothing();
};

void TestDiskObjects::kindOfADrive_data()
{
    lumi::test::columns<QString, QStringList, QString, bool, bool, int>();
    const QString usb = QStringLiteral("usb");
    constexpr int kNone = -1;
    const auto cf = static_cast<int>(Slot::CF);
    const auto sd = static_cast<int>(Slot::SD);
    QTest::newRow("CF card") << "flash_cf" << QStringList() << usb << true << true << cf;
    QTest::newRow("SD card") << "flash_sd" << QStringList() << "sdio" << false << true << sd;
    QTest::newRow("SDHC card") << "flash_sdhc" << QStringList() << usb << true << true << sd;
    QTest::newRow("SDXC card") << "flash_sdxc" << QStringList() << usb << true << true << sd;
    QTest::newRow("unknown card in a CF reader")
        << "" << names("flash_cf") << usb << true << true << cf;
    QTest::newRow("unknown card in a reader of several kinds")
        << "" << names("flash_ms flash_sd flash_cf") << usb << true << true << sd;
    QTest::newRow("another card in such a reader")
        << "flash_ms" << names("flash_ms flash_sd") << usb << true << true << kNone;
    QTest::newRow("USB stick") << "thumb" << QStringList() << usb << true << true << kNone;
    QTest::newRow("USB disk") << "" << QStringList() << usb << true << true << kNone;
    QTest::newRow("fixed USB disk") << "" << QStringList() << usb << false << false << kNone;
    QTest::newRow("built-in disk") << "" << QStringList() << "ata" << true << false << kNone;
}

void TestDiskObjects::kindOfADrive()
{
    const auto [media, compatible, bus, removable, isFound, kind]
        = lumi::test::row<QString, QStringList, QString, bool, bool, int>();
    const QList<RemovableDrive> drives
        = lumi::removableDrives(oneDrive({{QStringLiteral("Media"), media},
                                          {QStringLiteral("MediaCompatibility"), compatible},
                                          {QStringLiteral("ConnectionBus"), bus},
                                          {QStringLiteral("Removable"), removable}},
                                         mountedAt({QByteArray("/media/x\0", 9)})));
    QCOMPARE(drives.size(), isFound ? 1 : 0);
    if (isFound) {
        QCOMPARE(drives.first().kind ? static_cast<int>(*drives.first().kind) : -1, kind);
        QCOMPARE(drives.first().path, kDrivePath.path());
        QCOMPARE(drives.first().folders, QStringList{QStringLiteral("/media/x")});
    }
}

void TestDiskObjects::partsOfTheSystemHideADrive_data()
{
    lumi::test::columns<QVariantMap, QByteArray, bool, bool>();
    const auto listed = [](const char *file) {
        const QList<lumi::DiskConfiguration> lines{{QLatin1String(file), {}}};
        return QVariantMap{{QStringLiteral("Configuration"), QVariant::fromValue(lines)}};
    };
    QTest::newRow("a second partition") << QVariantMap() << QByteArray("/media/y") << true << true;
    QTest::newRow("the root") << QVariantMap() << QByteArray("/") << false << false;
    QTest::newRow("a line in fstab") << listed("fstab") << QByteArray("/y") << false << false;
    QTest::newRow("another file") << listed("crypttab") << QByteArray("/y") << true << true;
    QTest::newRow("a hidden partition")
        << QVariantMap{{QStringLiteral("HintIgnore"), true}} << QByteArray("/y") << true << false;
    QTest::newRow("a partition of the system")
        << QVariantMap{{QStringLiteral("HintSystem"), true}} << QByteArray("/y") << true << false;
}

void TestDiskObjects::partsOfTheSystemHideADrive()
{
    const auto [properties, folder, isDriveFound, isFolderFound]
        = lumi::test::row<QVariantMap, QByteArray, bool, bool>();
    DiskObjects objects = sdCard({"/media/x"});
    QVariantMap block = plainBlock();
    block.insert(properties);
    objects.insert(kSecond,
                   {{QStringLiteral("org.freedesktop.UDisks2.Block"), block},
                    {QStringLiteral("org.freedesktop.UDisks2.Filesystem"), mountedAt({folder})}});
    const QList<RemovableDrive> drives = lumi::removableDrives(objects);
    QCOMPARE(drives.size(), isDriveFound ? 1 : 0);
    if (isDriveFound) {
        QCOMPARE(drives.first().folders.contains(QString::fromLatin1(folder)), isFolderFound);
        QVERIFY(drives.first().folders.contains(QStringLiteral("/media/x")));
    }
}

void TestDiskObjects::devicesAreMountedOrNot()
{
    const RemovableDrive mounted = lumi::removableDrives(sdCard({"/a", "/b"})).value(0);
    QCOMPARE(mounted.folders, (QStringList{QStringLiteral("/a"), QStringLiteral("/b")}));
    QVERIFY(mounted.unmounted.isEmpty());
    const RemovableDrive unmounted = lumi::removableDrives(sdCard({})).value(0);
    QVERIFY(unmounted.folders.isEmpty());
    QCOMPARE(unmounted.unmounted, kFirst.path());
    // The device manager's rules may forbid it.
    DiskObjects objects = sdCard({});
    objects[kFirst][QStringLiteral("org.freedesktop.UDisks2.Block")].insert(
        QStringLiteral("HintAuto"), false);
    QVERIFY(lumi::removableDrives(objects).value(0).unmounted.isEmpty());
}

void TestDiskObjects::aDeviceWithoutItsDriveIsNothing()
{
    DiskObjects objects = sdCard({"/a"});
    objects.remove(kDrivePath);
    QVERIFY(lumi::removableDrives(objects).isEmpty());
    QVERIFY(lumi::removableDrives({}).isEmpty());
}

LUMI_TEST(TestDiskObjects)
#include "TestDiskObjects.moc"
