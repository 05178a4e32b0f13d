// SPDX-License-Identifier: MIT
// Making, renaming and removing what lies directly in a folder. Names are single names: one
// with a "/" would lead out of the folder, so it never exists and can't be made. A name that
// begins with a dot can't be given either: the entry would vanish from every listing.
#pragma once

class QString;

namespace lumi {

/// Whether both paths lead to one file or folder, as two spellings of a name do on a card, or
/// a link and what it points to. False if one of them can't be asked.
[[nodiscard]] bool areOneFile(const QString &path, const QString &other);
/// The folder itself and its parent count under the names "." and "..".
[[nodiscard]] bool hasEntry(const QString &folder, const QString &name);
[[nodiscard]] bool makeFolder(const QString &folder, const QString &name);
/// False, with both as they were, when the new name is taken or not allowed, or the system
/// refuses.
[[nodiscard]] bool renameEntry(const QString &folder, const QString &oldName,
                               const QString &newName);
/// Removes a file. A protected one stays.
[[nodiscard]] bool removePhoto(const QString &path);
/// Tries all folders in it, hidden ones and links left out: those that hold anything stay.
void removeEmptyFolders(const QString &folder);

} // namespace lumi
