// SPDX-License-Identifier: MIT
// Where the user's documents are, which files are protected, removing a file or a tree, and
// finding a name that is free.
#pragma once

#include <QString>

namespace lumi {

/// Absolute path of the folder above the photo store, existing or not.
[[nodiscard]] QString documentsPath();

/// Whether the file has no write permission for anybody, which is how a camera protects a photo.
/// The permission bits decide, since root may write every file. A missing file counts as
/// protected.
[[nodiscard]] bool isProtected(const QString &path);

} // namespace lumi

/// Removes a file, or with `recursive` a folder with all it holds; links are removed, never
/// followed. Failures inside a folder don't stop the walk: the result is that of removing
/// the emptied folder itself.
[[nodiscard]] bool removePath(const QString &path, bool recursive);

/// The path itself if it is free, otherwise the path with a number from 1 on. The number is
/// printed with `format` (one int conversion) and stands before the last `separator` of the
/// whole path, or at the end if the separator is null or doesn't occur. After 65535 tries
/// the last candidate comes back even though it is taken: the caller must fail on it and
/// must not remove it.
[[nodiscard]] QString uniquePath(const QString &path, const char *format, QChar separator);
