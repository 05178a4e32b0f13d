// SPDX-License-Identifier: MIT
// A program "sync" of the test, which is found before the real one.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

namespace lumi::test {

class StandInSync
{
public:
    enum Others { KeepOthers, HideOthers };

    /// Runs as a shell script in its own folder, path(). With HideOthers no other program is found.
    /// A null script means that there is no program "sync".
    explicit StandInSync(const QByteArray &script, Others others = KeepOthers)
        : m_oldPath(qgetenv("PATH"))
    {
        const QByteArray folder = QFile::encodeName(m_folder.path());
        const auto anybody = QFile::Permissions(0x7755);
        bool isMade = QFile::setPermissions(m_folder.path(), anybody); // tests change their user
        if (!script.isNull()) {
            QFile file(m_folder.filePath(QStringLiteral("sync")));
            isMade = file.open(QIODevice::WriteOnly) && file.setPermissions(anybody)
                && file.write("#!/bin/sh\ncd " + folder + " || exit 9\n" + script + '\n') > 0;
        }
        if (!isMade) {
            qFatal("cannot make a program");
        }
        qputenv("PATH", others == HideOthers ? folder : folder + ':' + m_oldPath);
    }

    ~StandInSync() { qputenv("PATH", m_oldPath); }

    StandInSync(const StandInSync &) = delete;
    StandInSync &operator=(const StandInSync &) = delete;

    /// The content of a file that the script makes.
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QByteArray m_oldPath;
    QTemporaryDir m_folder;
};

} // namespace lumi::test
