// SPDX-License-Identifier: MIT
#include "platform/Machine.h"

#include "platform/MachineProfile.h"
#include "platform/cards/SlotLinks.h"
#include "platform/files/diskFigures.h"
#include "platform/files/fileCalls.h"
#include "platform/memoryTable.h"
#include "platform/power/powerSupply.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdlib>

namespace {

using Key = lumi::MachineProfile::Key;

/// Results of a shell for a missing program and for one without permission.
constexpr int kProgramMissing = 127 << 8;
constexpr int kProgramRefused = 126 << 8;
constexpr int kShallowDepth = 16;
constexpr int kDeepDepth = 32;

std::unique_ptr<Machine> &installed()
{
    static std::unique_ptr<Machine> machine;
    return machine;
}

QString shellQuoted(QString path)
{
    return QLatin1Char('\'') + path.replace(QLatin1Char('\''), QLatin1String("'\\''"))
        + QLatin1Char('\'');
}

} // namespace

Machine::Machine() = default;
Machine::~Machine() = default;

Machine &Machine::instance()
{
    if (installed() == nullptr) {
        installed() = std::make_unique<Machine>();
    }
    return *installed();
}

void Machine::install(Machine *machine)
{
    installed().reset(machine);
}

const lumi::MachineProfile &Machine::profile() const
{
    if (m_profile == nullptr) {
        m_profile = std::make_unique<lumi::MachineProfile>();
    }
    return *m_profile;
}

QString Machine::mountPoint(Slot slot) const
{
    std::optional<QString> &known = m_mountPoints.at(static_cast<std::size_t>(slot));
    if (!known) {
        known = findMountPoint(slot);
    }
    return *known;
}

QString Machine::findMountPoint(Slot slot) const
{
    QString folder = profile().path(slot == Slot::CF ? Key::MountCF : Key::MountSD);
    const bool isThere = !folder.isEmpty() && QFileInfo::exists(folder);
    if (isThere || profile().number(Key::MountsOfDesktop) == 0) {
        return folder;
    }
    QString link = lumi::SlotLinks::path(slot);
    return !link.isEmpty() ? link : folder;
}

QString Machine::mountTable() const
{
    return profile().path(Key::MountTable);
}

QByteArray Machine::memInfo() const
{
    const std::optional<QByteArray> text = lumi::readSmallFile(profile().path(Key::MemoryFile));
    return text ? lumi::memoryTable(*text) : QByteArray();
}

DiskFigures Machine::disk(const QByteArray &path) const
{
    const std::optional<QByteArray> text = lumi::readSmallFile(profile().path(Key::DiskFigures));
    if (text && !path.isNull()) {
        const std::optional<DiskFigures> figures = lumi::findDiskFigures(*text, path);
        if (figures) {
            return *figures;
        }
    }
    return lumi::statDisk(path);
}

PowerStatus Machine::power() const
{
    return lumi::readPowerSupply(profile().path(Key::PowerDir));
}

int Machine::hinge() const
{
    const QString program = profile().path(Key::HingeProgram);
    const QFileInfo info(program);
    // Otherwise the shell would print an error at each key press.
    if (program.isEmpty() || !info.isFile()) {
        return kProgramMissing;
    }
    if (!info.isExecutable()) {
        return kProgramRefused;
    }
    // NOLINTNEXTLINE(bugprone-command-processor,cert-env33-c): the result is that of system()
    return std::system(QFile::encodeName(shellQuoted(program)).constData());
}

int Machine::keyDevice() const
{
    return profile().number(Key::KeyboardDevice);
}

int Machine::deviceKey(int key, Qt::KeyboardModifiers modifiers) const
{
    return profile().deviceKey(key, modifiers);
}

int Machine::panelDepth() const
{
    return profile().number(Key::PanelDepth) == kShallowDepth ? kShallowDepth : kDeepDepth;
}

bool Machine::showsUpright() const
{
    return profile().number(Key::Upright) != 0;
}

QString Machine::resourceDir() const
{
    return profile().path(Key::ResourcePath);
}

QString Machine::settingsFile(const QString &name) const
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QLatin1String("/lumivault/") + name + QLatin1String(".conf");
}
