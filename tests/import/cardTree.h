// SPDX-License-Identifier: MIT
// Cards as cameras and people leave them, and an account of what a folder holds that owes
// nothing to the program's own walk.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace lumi::test {

/// By relative path: "folder", "file" and the content, "link" and its target, or "other".
using Tree = QMap<QString, QByteArray>;

[[nodiscard]] Tree treeOf(const QString &folder);
/// The same with size, mode and time of each entry: equal only if nobody has written there.
[[nodiscard]] Tree stateOf(const QString &folder);
/// What an import of the folder must bring: no pipes, no dangling links, no linked folders,
/// and links to files as files.
[[nodiscard]] Tree importableTree(const QString &folder);

/// About count files in nested, hidden and empty folders, with all sorts of names and sizes,
/// links, and a pipe. Gives the number of files that an import brings.
int fillCard(const QString &folder, int count);

/// A file with this many bytes that differ from those of other names.
void writeBytes(const QString &path, qsizetype size);

/// Lets every user write in a folder of the temporary ones, and get there.
void openToAll(const QString &folder);

/// The descriptor of a file that this process has open, -1 if there is none. end: of its path.
[[nodiscard]] int openFile(const QString &end);

} // namespace lumi::test
