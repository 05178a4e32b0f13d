// SPDX-License-Identifier: MIT
#include "platform/MachineProfile.h"

#include "platform/files/fileCalls.h"
#include "platform/keys/deviceKey.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeySequence>
#include <QStandardPaths>

#include <algorithm>

namespace {

using Key = lumi::MachineProfile::Key;

struct Row
{
    Key key;
    const char *group;
    const char *name;
    const char *def;
};

constexpr Row kRows[] = {
    {Key::MountCF, "Mounts", "CF", "/mnt/cf"},
    {Key::MountSD, "Mounts", "SD", "/mnt/card"},
    {Key::MountTable, "Mounts", "Table", "/proc/self/mountinfo"},
    {Key::MountsOfDesktop, "Mounts", "Desktop", "1"},
    {Key::MemoryFile, "Memory", "File", "/proc/meminfo"},
    {Key::PowerDir, "Power", "Dir", "/sys/class/power_supply"},
    {Key::HingeProgram, "Hinge", "Program", "/home/QtPalmtop/bin/chkhinge"},
    {Key::DiskFigures, "Disk", "Figures", ""},
    {Key::PanelDepth, "Panel", "Depth", "32"},
    {Key::Upright, "Photos", "Upright", "1"},
    {Key::KeyboardDevice, "Keys", "Device", "0"},
    {Key::ResourcePath, "Resources", "Path", "/usr/share/lumivault"},
};

struct DeviceKeyRow
{
    int code;
    const char *name;
    const char *def; ///< key sequences of one key each, separated by blanks
};

constexpr DeviceKeyRow kDeviceKeys[] = {
    {kKeyZoomIn, "ZoomIn", "+ = Ctrl++ Ctrl+="},
    {kKeyZoomOut, "ZoomOut", "- Ctrl+-"},
    {kKeyFit, "Fit", "0 * Ctrl+0"},
    {kKeyMenu, "Menu", "F11 Menu"},
    {kKeyMail, "Mail", "Ctrl+M"},
};

constexpr const char *kNamedFile = "LUMIVAULT_MACHINE";
constexpr const char *kFileName = "lumivault/machine.ini";

/// The profile in etc/xdg of the prefix that this program is installed under; empty without one.
QString fileOfThePrefix()
{
    if (QCoreApplication::instance() == nullptr) {
        return {};
    }
    const QString file
        = QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1String("/../etc/xdg/")
                          + QLatin1String(kFileName));
    return QFileInfo(file).isFile() ? file : QString();
}

const Row &rowOf(Key key)
{
    return *std::find_if(std::begin(kRows), std::end(kRows), [key](const Row &row) {
        return row.key == key;
    });
}

} // namespace

lumi::MachineProfile::MachineProfile()
{
    const QString file = findFile();
    if (!file.isEmpty()) {
        const std::optional<QByteArray> text = readSmallFile(file);
        if (!text) {
            qWarning("The machine profile can't be read: %s", qPrintable(file));
        }
        m_folder = QFileInfo(file).absolutePath();
        m_ini = IniText(text.value_or(QByteArray()));
    }
    readKeys();
}

QString lumi::MachineProfile::findFile()
{
    const QString named = qEnvironmentVariable(kNamedFile);
    if (!named.isEmpty()) {
        return named;
    }
    const QString found
        = QStandardPaths::locate(QStandardPaths::GenericConfigLocation, QLatin1String(kFileName));
    return !found.isEmpty() ? found : fileOfThePrefix();
}

void lumi::MachineProfile::fixNamedFile()
{
    const QString named = qEnvironmentVariable(kNamedFile);
    if (!named.isEmpty()) {
        qputenv(kNamedFile, QDir::current().absoluteFilePath(named).toLocal8Bit());
    }
}

QString lumi::MachineProfile::text(Key key) const
{
    const Row &row = rowOf(key);
    return m_ini.value(QString::fromLatin1(row.group), QString::fromLatin1(row.name))
        .value_or(QString::fromLatin1(row.def));
}

QString lumi::MachineProfile::path(Key key) const
{
    const QString value = text(key);
    return value.isEmpty() ? QString() : QDir::cleanPath(QDir(m_folder).absoluteFilePath(value));
}

int lumi::MachineProfile::number(Key key) const
{
    bool isNumber = false;
    const int value = text(key).toInt(&isNumber);
    return isNumber ? value : QByteArray(rowOf(key).def).toInt();
}

void lumi::MachineProfile::readKeys()
{
    for (const DeviceKeyRow &row : kDeviceKeys) {
        addKeys(row.code,
                m_ini.value(QStringLiteral("Keys"), QString::fromLatin1(row.name))
                    .value_or(QString::fromLatin1(row.def)));
    }
}

void lumi::MachineProfile::addKeys(int code, const QString &sequences)
{
    const QStringList names = sequences.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &name : names) {
        const QKeySequence sequence = QKeySequence::fromString(name, QKeySequence::PortableText);
        if (sequence.count() == 1 && sequence[0].key() != Qt::Key_unknown) {
            m_keys.append({code, sequence[0].key(), sequence[0].keyboardModifiers()});
        }
    }
}

int lumi::MachineProfile::deviceKey(int key, Qt::KeyboardModifiers modifiers) const
{
    // Some keyboards need Shift for "+", others have it on the keypad.
    const Qt::KeyboardModifiers pressed = modifiers & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const Qt::KeyboardModifiers unshifted = pressed & ~Qt::KeyboardModifiers(Qt::ShiftModifier);
    for (const KeyRow &row : m_keys) {
        if (row.key == key && (row.modifiers == pressed || row.modifiers == unshifted)) {
            return row.code;
        }
    }
    return 0;
}
