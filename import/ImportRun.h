// SPDX-License-Identifier: MIT
// The copy of a card's tree into a new folder of the photo store: all folders, then file by
// file, each compared with its source by size. It shows nothing: what it does and meets goes
// out through the callbacks. Events run while it copies and while it waits for the disk.
// No file is ever overwritten, what was copied before stays, and the card is only read. A file
// that failed leaves nothing under its name, unless that can't be removed: the caller is told of
// the file either way.
#pragma once

#include "import/ImportKind.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace lumi {

/// What to copy: paths relative to the root, with a leading "/". Folders come before what they
/// hold.
struct ImportTree
{
    QString root;
    QStringList folders;
    QStringList files;
    QStringList leftOut = {}; ///< absolute paths of what a search could not take
};

/// All three are called.
struct ImportCallbacks
{
    /// 1 when the folders stand, then one more for each file.
    std::function<void(int step)> progress;
    std::function<bool()> isCardPresent;
    std::function<void(const QString &path, ImportKind kind)> fileFailed;
};

class ImportRun
{
public:
    ImportRun(ImportTree tree, ImportCallbacks callbacks);

    /// Ends at the first file that can't be copied, or when the card is no longer present. Goes on
    /// after a copy of another size. Reports what was left out as well, so that a run with any of it
    /// is not Done.
    /// @param folderName of the new folder; a number is put behind a name that is taken
    [[nodiscard]] ImportKind run(const QString &folderName);

    /// Waits until all copies are on the disk. To be called after run(), if it copied anything.
    /// A Cancel that ended the run does not end the wait; a new one does.
    /// @param runKind how the run ended. Cancelled, MemoryFull and AccessFailure stay; Done and
    ///        Mismatch become Cancelled or AccessFailure if the wait ends early
    [[nodiscard]] ImportKind waitForDisk(ImportKind runKind);

    /// Of the folder that was made, or was to be made.
    [[nodiscard]] QString folderName() const { return m_folderName; }

    /// Files that went all the way, those with a wrong size included.
    [[nodiscard]] int copiedCount() const { return m_copiedCount; }

private:
    [[nodiscard]] ImportKind makeTarget(const QString &folderName);
    [[nodiscard]] ImportKind makeFolders() const;
    [[nodiscard]] ImportKind copyAll();
    [[nodiscard]] ImportKind copyOne(const QString &relPath) const;

    ImportTree m_tree;
    ImportCallbacks m_callbacks;
    QString m_target;
    QString m_folderName;
    int m_copiedCount = 0;
};

/// What a result of copyFile() other than CopyDone means.
/// @param roomKB free now, after the partial copy has gone
/// @param sourceSize in bytes
[[nodiscard]] ImportKind kindOfFailure(int copyResult, int roomKB, qint64 sourceSize,
                                       bool isCardPresent);

} // namespace lumi
