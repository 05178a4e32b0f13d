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
#include <utility>

namespace {

using Key = lumi::MachineProfile::Key;

struct Row
{
    Key key = Key::MountCF;
    const char *group = nullptr;
    const char *name = nullptr;
    const char *def = nullptr;
    const char *installed = nullptr; ///< where it is installed, relative to the program's folder
};

constexpr Row kRows[] = {
    {Key::MountCF, "Mounts", "CF", "/mnt/cf"},
    {Key::MountSD, "Mounts", "SD", "/mnt/card"},
    {Key::MountTable, "Mounts", "Table", "/proc/self/mountinfo"},
    {Key::MountsOfDesktop, "Mounts", "Desktop", "1"},
    {Key::MemoryFile, "Memory", "File", "/proc/meminfo"},
    {Key::PowerDir, "Power", "Dir", "/sys/class/power_supply"},
    {Key::HingeProgram, "Hinge", "Program", "/home/QtPalmtop/bin/chkhinge",
     LUMI_LIBEXEC_DIR "/chkhinge"},
    {Key::DiskFigures, "Disk", "Figures", ""},
    {Key::PanelDepth, "Panel", "Depth", "32"},
    {Key::Upright, "Photos", "Upright", "1"},
    {Key::KeyboardDevice, "Keys", "Device", "0"},
    {Key::ResourcePath, "Resources", "Path", "/usr/share/lumivault", LUMI_DATA_DIR},
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

/// The file or folder at a path relative to the program's folder; empty without one.
QString installedFile(const QString &path)
{
    if (QCoreApplication::instance() == nullptr) {
        return {};
    }
    const QString file
        = QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1Char('/') + path);
    return QFileInfo::exists(file) ? file : QString();
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
    for (const QString &file : files()) {
        readFile(file);
    }
    readKeys();
}

QStringList lumi::MachineProfile::files()
{
    const QString named = qEnvironmentVariable(kNamedFile);
    if (!named.isEmpty()) {
        return {named};
    }
    QStringList found = QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation,
                                                  QLatin1String(kFileName));
    const QString ofThePrefix
        = installedFile(QLatin1String("../etc/xdg/") + QLatin1String(kFileName));
    if (!ofThePrefix.isEmpty()) {
        found.append(ofThePrefix);
    }
    return found;
}

void lumi::MachineProfile::readFile(const QString &path)
{
    const std::optional<QByteArray> text = readSmallFile(path);
    if (!text) {
        qWarning("The machine profile can't be read: %s", qPrintable(path));
        return;
    }
    m_files.append({QFileInfo(path).absolutePath(), IniText(*text)});
}

void lumi::MachineProfile::fixNamedFile()
{
    const QString named = qEnvironmentVariable(kNamedFile);
    if (!named.isEmpty()) {
        qputenv(kNamedFile, QDir::current().absoluteFilePath(named).toLocal8Bit());
    }
}

std::optional<lumi::MachineProfile::Entry> lumi::MachineProfile::find(const char *group,
                                                                      const char *name) const
{
    for (const File &file : m_files) {
        std::optional<QString> value
            = file.text.value(QString::fromLatin1(group), QString::fromLatin1(name));
        if (value) {
            return Entry{*std::move(value), file.folder};
        }
    }
    return std::nullopt;
}

QString lumi::MachineProfile::path(Key key) const
{
    const Row &row = rowOf(key);
    if (const std::optional<Entry> entry = find(row.group, row.name)) {
        return entry->value.isEmpty()
            ? QString()
            : QDir::cleanPath(QDir(entry->folder).absoluteFilePath(entry->value));
    }
    QString installed;
    if (row.installed != nullptr) {
        installed = installedFile(QString::fromLatin1(row.installed));
    }
    return installed.isEmpty() ? QString::fromLatin1(row.def) : installed;
}

int lumi::MachineProfile::number(Key key) const
{
    const Row &row = rowOf(key);
    bool isNumber = false;
    const std::optional<Entry> entry = find(row.group, row.name);
    const int value = entry ? entry->value.toInt(&isNumber) : 0;
    return isNumber ? value : QByteArray(row.def).toInt();
}

void lumi::MachineProfile::readKeys()
{
    for (const DeviceKeyRow &row : kDeviceKeys) {
        const std::optional<Entry> entry = find("Keys", row.name);
        addKeys(row.code, entry ? entry->value : QString::fromLatin1(row.def));
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
