// SPDX-License-Identifier: MIT
// The interface between the program and the machine: the folders of the cards, the free memory and
// disk space, the charge of the battery, the position of the hinge.
// No other class asks the system for these. The values come from a profile file, so that one
// binary runs on a handheld, on a desktop and in a test; see MachineProfile.h for the keys.
// Owns: the profile.
#pragma once

#include <QByteArray>
#include <QString>
#include <Qt>

#include <array>
#include <memory>
#include <optional>

namespace lumi {
class MachineProfile;
}

enum class Slot { CF, SD };

/// State of the power supply at one moment.
class PowerStatus
{
public:
    enum ACStatus { Offline, Backup, Online };

    PowerStatus() = default;

    PowerStatus(ACStatus ac, int percent)
        : m_acStatus(ac)
        , m_batteryPercentRemaining(percent)
    { }

    [[nodiscard]] ACStatus acStatus() const { return m_acStatus; }

    /// 0 to 100. It is 100 without a battery, or if no battery reports its charge.
    [[nodiscard]] int batteryPercentRemaining() const { return m_batteryPercentRemaining; }

    friend bool operator==(const PowerStatus &, const PowerStatus &) = default;

private:
    ACStatus m_acStatus = Online;
    int m_batteryPercentRemaining = 100;
};

/// The values that statfs returns for a file system. The counts are in blocks of blockSize bytes.
struct DiskFigures
{
    qint64 blockSize = 0;
    qint64 blocks = 0;
    qint64 available = 0; ///< for an ordinary user
    bool ok = false;
};

class Machine
{
public:
    Machine();
    virtual ~Machine();
    Machine(const Machine &) = delete;
    Machine &operator=(const Machine &) = delete;

    /// The installed machine; made from the profile at first use.
    static Machine &instance();
    /// Replaces the machine and takes ownership. Null installs a new machine from the profile.
    static void install(Machine *machine);

    /// Folder of a card, without a trailing "/". It never changes and need not exist. If the
    /// profile's mount point did not exist at the first call, this is a link that follows the
    /// desktop's mounts; see platform/cards/SlotLinks.h.
    virtual QString mountPoint(Slot slot) const;
    /// File to be polled. An exceptional condition on it means that the mounts have changed.
    virtual QString mountTable() const;
    /// Memory figures in table form: a heading, then "Mem:" with total, used, free, shared,
    /// buffers and cached in bytes. Empty if the file can't be read.
    virtual QByteArray memInfo() const;
    /// `path` in the file system's encoding.
    virtual DiskFigures disk(const QByteArray &path) const;
    virtual PowerStatus power() const;
    /// Result of the hinge program as system() gives it; 0 for the normal position.
    virtual int hinge() const;
    /// 0 for the usual keyboard, 1 for the handheld's.
    virtual int keyDevice() const;
    /// Code of the device key (0x2010 and so on) that a key of an ordinary keyboard stands
    /// for, or 0 if it stands for itself.
    virtual int deviceKey(int key, Qt::KeyboardModifiers modifiers) const;
    /// Bits of a pixel of the panel: 16 or 32.
    virtual int panelDepth() const;
    /// Whether photos are turned as their Exif orientation says.
    virtual bool showsUpright() const;
    /// Folder of pixmaps/ and help/.
    virtual QString resourceDir() const;
    /// Path of the settings file of a name; the folder need not exist yet.
    virtual QString settingsFile(const QString &name) const;

private:
    const lumi::MachineProfile &profile() const;
    QString findMountPoint(Slot slot) const;

    mutable std::unique_ptr<lumi::MachineProfile> m_profile;
    mutable std::array<std::optional<QString>, 2> m_mountPoints; ///< set at the first call
};
