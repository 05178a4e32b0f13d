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

/// Removes a file, or with `recursive` a folder with its contents; links are removed, never
/// followed. Failures inside a folder don't stop the walk. Returns whether the path itself was
/// removed.
[[nodiscard]] bool removePath(const QString &path, bool recursive);

/// The path itself if it is free, otherwise the path with a number from 1 on. The number is printed
/// with `format` (one int conversion) before the last `separator` of the whole path, or at the end
/// if the separator is null or doesn't occur. After 65535 tries the last candidate is returned
/// although it is taken. The caller must treat this as a failure and must not remove that file.
[[nodiscard]] QString uniquePath(const QString &path, const char *format, QChar separator);
