// SPDX-License-Identifier: MIT
#include "tests/platform/bus/DiskDouble.h"

#include <QByteArrayList>
#include <QDBusMetaType>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

const QString kService = QStringLiteral("org.freedesktop.UDisks2");
const QString kRoot = QStringLiteral("/org/freedesktop/UDisks2");
const QString kDrive = QStringLiteral("org.freedesktop.UDisks2.Drive");
const QString kBlock = QStringLiteral("org.freedesktop.UDisks2.Block");
const QString kFileSystem = QStringLiteral("org.freedesktop.UDisks2.Filesystem");

QString drivePath(const QString &name)
{
    return kRoot + QStringLiteral("/drives/") + name;
}

/// The service sends names of folders with a closing zero byte.
QVariant mountPoints(const QStringList &folders)
{
    QByteArrayList names;
    for (const QString &folder : folders) {
        names.append(QFile::encodeName(folder) + '\0');
    }
    return QVariant::fromValue(names);
}

} // namespace

QDBusArgument &lumi::operator<<(QDBusArgument &argument, const DiskConfiguration &entry)
{
    argument.beginStructure();
    argument << entry.file << entry.details;
    argument.endStructure();
    return argument;
}

lumi::test::DiskDouble::DiskDouble(const QDBusConnection &bus)
    : m_bus(bus)
{
    qDBusRegisterMetaType<QByteArrayList>();
    qDBusRegisterMetaType<DiskConfiguration>();
    qDBusRegisterMetaType<QList<DiskConfiguration>>();
    qDBusRegisterMetaType<DiskInterfaces>();
    qDBusRegisterMetaType<DiskObjects>();
}

lumi::test::DiskDouble::~DiskDouble()
{
    vanish();
}

void lumi::test::DiskDouble::appear()
{
    QVERIFY(m_bus.registerVirtualObject(kRoot, this, QDBusConnection::SubPath));
    QVERIFY(m_bus.registerService(kService));
}

void lumi::test::DiskDouble::vanish()
{
    m_bus.unregisterService(kService);
    m_bus.unregisterObject(kRoot, QDBusConnection::UnregisterTree);
}

QString lumi::test::DiskDouble::devicePath(const QString &name)
{
    return kRoot + QStringLiteral("/block_devices/") + name;
}

void lumi::test::DiskDouble::sendFromRoot(const QString &signal, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createSignal(
        kRoot, QStringLiteral("org.freedesktop.DBus.ObjectManager"), signal);
    message.setArguments(arguments);
    m_bus.send(message);
}

void lumi::test::DiskDouble::add(const QString &path, const DiskInterfaces &interfaces)
{
    const QDBusObjectPath object(path);
    m_objects.insert(object, interfaces);
    sendFromRoot(QStringLiteral("InterfacesAdded"),
                 {QVariant::fromValue(object), QVariant::fromValue(interfaces)});
}

void lumi::test::DiskDouble::addDrive(const QString &name, const QVariantMap &properties)
{
    add(drivePath(name), {{kDrive, properties}});
}

void lumi::test::DiskDouble::addDevice(const QString &name, const QString &drive,
                                       const QVariantMap &properties)
{
    QVariantMap block{
        {QStringLiteral("Drive"), QVariant::fromValue(QDBusObjectPath(drivePath(drive)))},
        {QStringLiteral("HintAuto"), true}};
    block.insert(properties);
    add(devicePath(name), {{kBlock, block}});
}

void lumi::test::DiskDouble::addFileSystem(const QString &name, const QString &drive,
                                           const QStringList &folders,
                                           const QVariantMap &properties)
{
    addDevice(name, drive, properties);
    add(devicePath(name),
        {{kBlock, m_objects.value(QDBusObjectPath(devicePath(name))).value(kBlock)},
         {kFileSystem, {{QStringLiteral("MountPoints"), mountPoints(folders)}}}});
}

void lumi::test::DiskDouble::addSdCard(const QString &name, const QStringList &folders)
{
    addDrive(name,
             {{QStringLiteral("Media"), QStringLiteral("flash_sd")},
              {QStringLiteral("Removable"), true}});
    addFileSystem(name, name, folders);
}

void lumi::test::DiskDouble::change(const QString &device, const QString &interface,
                                    const QVariantMap &values)
{
    m_objects[QDBusObjectPath(devicePath(device))][interface].insert(values);
    QDBusMessage message = QDBusMessage::createSignal(
        devicePath(device), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"));
    message << interface << values << QStringList();
    m_bus.send(message);
}

void lumi::test::DiskDouble::setFolders(const QString &device, const QStringList &folders)
{
    change(device, kFileSystem, {{QStringLiteral("MountPoints"), mountPoints(folders)}});
}

void lumi::test::DiskDouble::setProperty(const QString &device, const QString &name,
                                         const QVariant &value)
{
    change(device, kBlock, {{name, value}});
}

void lumi::test::DiskDouble::remove(const QString &name)
{
    for (const QString &path : {devicePath(name), drivePath(name)}) {
        const QDBusObjectPath object(path);
        const QStringList interfaces = m_objects.take(object).keys();
        sendFromRoot(QStringLiteral("InterfacesRemoved"),
                     {QVariant::fromValue(object), interfaces});
    }
}

QDBusMessage lumi::test::DiskDouble::mounted(const QDBusMessage &request)
{
    mountCalls.append(request);
    if (mountFolder.isEmpty()) {
        return request.createErrorReply(
            QStringLiteral("org.freedesktop.UDisks2.Error.NotAuthorizedCanObtain"),
            QStringLiteral("no"));
    }
    setFolders(QFileInfo(request.path()).fileName(), {mountFolder});
    return request.createReply(mountFolder);
}

bool lumi::test::DiskDouble::handleMessage(const QDBusMessage &message,
                                           const QDBusConnection &connection)
{
    if (isSilent) {
        return true;
    }
    if (message.member() == QLatin1String("GetManagedObjects")) {
        return connection.send(message.createReply(QVariant::fromValue(m_objects)));
    }
    return message.member() == QLatin1String("Mount") && connection.send(mounted(message));
}

QString lumi::test::DiskDouble::introspect(const QString & /*path*/) const
{
    return {};
}
