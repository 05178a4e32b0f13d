// SPDX-License-Identifier: MIT
// A new file that gets its name only when it is complete. After a crash or on a full disk there is
// either the whole file or none. All photos and the files of the thumbnail store are written
// through this class.
// The file is written without a name (O_TMPFILE) and linked by commit(). On file systems that
// refuse this, such as FAT, it is written under the name kHiddenName in the same folder and then
// renamed. A file that a kill left under that name is removed by the next one written there.
// Owns: the file until commit() has given it its name.
#pragma once

#include "platform/files/fileCalls.h"

#include <QByteArray>
#include <QString>

namespace lumi {

class NewFile
{
public:
    static constexpr char kHiddenName[] = ".lumivault-new";

    /// Creates nothing yet. path: the final name, in a folder that exists.
    explicit NewFile(const QString &path);
    /// Discards the file unless commit() has succeeded.
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    /// False, with error() set, if the folder takes no file. Call it once, before the others.
    [[nodiscard]] bool open();

    /// Returns the number of bytes written: less than size if the disk filled up on the way, -1 if
    /// nothing could be written.
    [[nodiscard]] qint64 write(const char *bytes, qint64 size);

    /// Syncs the contents to the disk. To sync the name too, sync the folder after commit().
    [[nodiscard]] bool sync();

    /// Gives the file its name. False if anything failed since open(), or if the name is taken
    /// (EEXIST): an existing file is never replaced.
    [[nodiscard]] bool commit();

    /// The errno of the first failure, else 0.
    [[nodiscard]] int error() const { return m_error; }

    /// Bytes written so far.
    [[nodiscard]] qint64 size() const { return m_size; }

    /// For fchmod() and the like.
    [[nodiscard]] int fd() const { return m_file.get(); }

private:
    [[nodiscard]] bool isHidden() const { return !m_hiddenPath.isEmpty(); }

    void openHidden();
    [[nodiscard]] bool note(int error);
    [[nodiscard]] int flush() const;
    [[nodiscard]] int giveName() const;
    [[nodiscard]] bool ownsHiddenName() const;

    QString m_path;
    QString m_hiddenPath; ///< null while the file has no name at all
    Descriptor m_file;
    qint64 m_size = 0;
    int m_error = 0;
};

/// Writes the bytes into a new file. Returns 0, or the errno of the failure; nothing is left then.
[[nodiscard]] int writeNewFile(const QString &path, const QByteArray &bytes);

} // namespace lumi
