// SPDX-License-Identifier: MIT
// The complete listing of a folder, for copies. Qt's listing leaves out names that are not valid
// text, and ends early without an error if the folder can't be read. A user who copies a card and
// then empties it must be told about both.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace lumi {

struct FolderNames
{
    QList<QByteArray> names; ///< without "." and "..", in the order of QDir::Name | IgnoreCase
    bool isWhole = false;    ///< false if the folder could not be read completely
};

[[nodiscard]] FolderNames namesIn(const QString &folder);

/// An entry of a folder. For a link, all members except isLink describe its target.
struct FolderEntry
{
    enum Kind {
        File,
        Folder,
        Other,  ///< a pipe, a device, a broken link
        Unknown ///< stat() failed
    };

    QString path;        ///< bytes above 127 as %XX if the name is not valid text
    QString name;        ///< the last part of path
    bool isText = false; ///< false if the name is not valid text, so that path does not exist
    bool isLink = false;
    Kind kind = Unknown;
    bool isReadable = false;
    qint64 size = 0;
};

[[nodiscard]] FolderEntry entryOf(const QString &folder, const QByteArray &name);

/// Whether path lies below folder after links are resolved.
[[nodiscard]] bool leadsInto(const QString &folder, const QString &path);

} // namespace lumi
