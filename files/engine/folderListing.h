// SPDX-License-Identifier: MIT
// The listing of a folder for a copy: it hides nothing. The toolkit's listing leaves out names
// that are not valid text, and ends early without an error when the folder can't be read. A user
// who copies a card and then empties it must learn of both.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace lumi {

struct FolderNames
{
    QList<QByteArray> names; ///< without "." and "..", in the order of QDir::Name | IgnoreCase
    bool isWhole;            ///< false if the folder could not be read to its end
};

[[nodiscard]] FolderNames namesIn(const QString &folder);

/// An entry of a folder. For a link, all but isLink is about its target.
struct FolderEntry
{
    enum Kind {
        File,
        Folder,
        Other,  ///< a pipe, a device, a link that leads nowhere
        Unknown ///< it can't be asked
    };

    QString path;        ///< bytes above 127 as %XX if the name is not valid text
    QString name;        ///< the last part of path
    bool isText = false; ///< false if path leads nowhere because of the name
    bool isLink = false;
    Kind kind = Unknown;
    bool isReadable = false;
    qint64 size = 0;
};

[[nodiscard]] FolderEntry entryOf(const QString &folder, const QByteArray &name);

/// Whether path, links followed, lies below folder.
[[nodiscard]] bool leadsInto(const QString &folder, const QString &path);

} // namespace lumi
