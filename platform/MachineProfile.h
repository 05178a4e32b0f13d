// SPDX-License-Identifier: MIT
// What is particular to a machine, read from a profile file at first use. The first of these
// counts, as a whole: the file $LUMIVAULT_MACHINE names; lumivault/machine.ini in the user's,
// then the system's configuration folders, then in the etc/xdg of the program's own prefix;
// the handheld's own values.
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
        MemoryFile,
        PowerDir,
        HingeProgram,
        DiskFigures,
        PanelDepth,
        KeyboardDevice,
        ResourcePath,
    };

    /// Reads the profile of this process's environment.
    MachineProfile();

    /// Absolute path, or an empty string where the profile leaves the value empty.
    [[nodiscard]] QString path(Key key) const;
    /// The default if the value is no number.
    [[nodiscard]] int number(Key key) const;
    /// Code of the device key for a real one, 0 for none.
    [[nodiscard]] int deviceKey(int key, Qt::KeyboardModifiers modifiers) const;

    /// The file that a process started now would read; empty without one.
    [[nodiscard]] static QString findFile();
    /// Makes a relative $LUMIVAULT_MACHINE absolute: it is meant from the folder the program
    /// was started in, and the program works in another one by the time it reads the profile.
    static void fixNamedFile();

private:
    struct KeyRow
    {
        int code;
        int key;
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
