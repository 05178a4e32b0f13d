// SPDX-License-Identifier: MIT
// A private folder with files of known contents.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace lumi::test {

class FileFixture
{
public:
    FileFixture();
    ~FileFixture();
    FileFixture(const FileFixture &) = delete;
    FileFixture &operator=(const FileFixture &) = delete;

    /// Absolute; "" is the folder itself.
    [[nodiscard]] QString path(const QString &name = QString()) const;
    /// Makes a file and its folders.
    QString make(const QString &name, const QByteArray &content = QByteArray()) const;
    QString makeFolder(const QString &name) const;
    /// Makes a symbolic link with exactly this target.
    QString makeLink(const QString &name, const QString &target) const;
    QString makePipe(const QString &name) const;
    /// Null for a missing file.
    [[nodiscard]] QByteArray content(const QString &name) const;
    /// Paths of all entries below a folder, sorted, folders with a trailing "/".
    [[nodiscard]] QStringList entries(const QString &folder = QString()) const;
    /// Bytes that differ from block to block.
    [[nodiscard]] static QByteArray noise(int size);

private:
    QTemporaryDir m_folder;
};

} // namespace lumi::test
