// SPDX-License-Identifier: MIT
// Makes, renames and removes entries of a folder. A name with a "/" would lead out of the folder:
// such an entry never exists and can't be made. A name with a leading dot can't be given either,
// because no listing would show the entry.
#pragma once

class QString;

namespace lumi {

/// Whether both paths lead to the same file or folder, for example two spellings of a name on a
/// card, or a link and its target. False if one of them does not exist.
[[nodiscard]] bool areOneFile(const QString &path, const QString &other);
/// The names "." and ".." exist in every folder.
[[nodiscard]] bool hasEntry(const QString &folder, const QString &name);
[[nodiscard]] bool makeFolder(const QString &folder, const QString &name);
/// False, and nothing has changed, if the new name is taken or not allowed, or the system refuses.
[[nodiscard]] bool renameEntry(const QString &folder, const QString &oldName,
                               const QString &newName);
/// Removes a file, unless it is protected.
[[nodiscard]] bool removePhoto(const QString &path);
/// Removes all empty folders in it, except hidden ones and links.
void removeEmptyFolders(const QString &folder);

} // namespace lumi
