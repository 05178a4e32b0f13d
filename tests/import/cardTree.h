// SPDX-License-Identifier: MIT
// Cards with realistic contents, and a listing of a folder that is independent of the program's own
// walk.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace lumi::test {

/// By relative path: "folder", "file" and the content, "link" and its target, or "other".
using Tree = QMap<QString, QByteArray>;

[[nodiscard]] Tree treeOf(const QString &folder);
/// treeOf() with size, mode and time of each entry: equal only if nothing was written.
[[nodiscard]] Tree stateOf(const QString &folder);
/// The expected result of an import of the folder: without pipes, broken links and linked folders,
/// and links to files as files.
[[nodiscard]] Tree importableTree(const QString &folder);

/// Makes about count files in nested, hidden and empty folders, with various names and sizes, links,
/// and a pipe. Returns the number of files that an import copies.
int fillCard(const QString &folder, int count);

/// Makes a file of this size; its contents depend on its name.
void writeBytes(const QString &path, qsizetype size);

/// Lets every user reach and write a temporary folder.
void openToAll(const QString &folder);

/// The descriptor of an open file of this process whose path ends like this, or -1.
[[nodiscard]] int openFile(const QString &end);

} // namespace lumi::test
