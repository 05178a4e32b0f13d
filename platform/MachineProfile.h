// SPDX-License-Identifier: MIT
// Paths and numbers of one machine, read from a profile file at first use. Only the first file
// found is read: the one that $LUMIVAULT_MACHINE names; lumivault/machine.ini in the user's, then
// in the system's configuration folders; the one in etc/xdg of the program's own prefix. Without a
// file the values of the handheld apply.
// Format: INI (see IniText.h); the keys and their defaults are the table in the .cpp file and
// machine.ini.in. Paths may be relative to the profile's folder; closing "/" are taken off.
#pragma once

#include "platform/files/IniText.h"

#include <QList>
#include <QString>
#include <Qt>

namespace lumi {

class MachineProfile
{
public:
    enum class Key {
        MountCF,
        MountSD,
        MountTable,
        MountsOfDesktop,
        MemoryFile,
        PowerDir,
        HingeProgram,
        DiskFigures,
        PanelDepth,
        Upright,
        KeyboardDevice,
        ResourcePath,
    };

    /// Reads the profile of this process's environment.
    MachineProfile();

    /// Absolute path, or an empty string where the profile leaves the value empty.
    [[nodiscard]] QString path(Key key) const;
    /// The default if the value is not a number.
    [[nodiscard]] int number(Key key) const;
    /// Code of the device key for a real one, 0 for none.
    [[nodiscard]] int deviceKey(int key, Qt::KeyboardModifiers modifiers) const;

    /// The file that a process would read if it started now; empty without one.
    [[nodiscard]] static QString findFile();
    /// Makes a relative $LUMIVAULT_MACHINE absolute. It is relative to the folder the program was
    /// started in, and the program changes its folder before it reads the profile.
    static void fixNamedFile();

private:
    struct KeyRow
    {
        int code = 0;
        int key = 0;
        Qt::KeyboardModifiers modifiers;
    };

    [[nodiscard]] QString text(Key key) const;
    void readKeys();
    void addKeys(int code, const QString &sequences);

    QString m_folder;
    IniText m_ini;
    QList<KeyRow> m_keys;
};

} // namespace lumi
