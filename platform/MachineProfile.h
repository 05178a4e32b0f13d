// SPDX-License-Identifier: MIT
// Paths and numbers of one machine, read from profile files at first use. A key counts in the first
// of these files that has it: lumivault/machine.ini in the user's, then in the system's
// configuration folders, then in etc/xdg of the prefix that the program is installed under. If
// $LUMIVAULT_MACHINE names a file, that file replaces all of them. A key that no file has gets its
// default. The helper program and the pictures are first looked for where they are installed with
// the program.
// Format: INI (see IniText.h); the keys and their defaults are the table in the .cpp file and
// machine.ini. A relative path is relative to the folder of its file; closing "/" are taken off.
#pragma once

#include "platform/files/IniText.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <Qt>

#include <optional>

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

    /// The files that a process would read if it started now, the most important one first.
    [[nodiscard]] static QStringList files();
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

    struct File
    {
        QString folder;
        IniText text;
    };

    struct Entry
    {
        QString value;
        QString folder; ///< of the file that has the entry
    };

    void readFile(const QString &path);
    [[nodiscard]] std::optional<Entry> find(const char *group, const char *name) const;
    void readKeys();
    void addKeys(int code, const QString &sequences);

    QList<File> m_files;
    QList<KeyRow> m_keys;
};

} // namespace lumi
