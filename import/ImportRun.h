// SPDX-License-Identifier: MIT
// Copies the tree of a card into a new folder of the photo store: first all folders, then all
// files. Each copy is compared with its source by size. Progress and failures are reported by
// callbacks. Events run while it copies and while it waits for the disk.
// No file is ever overwritten, earlier copies stay, and the card is only read. A failed copy is
// reported and removed.
#pragma once

#include "import/ImportKind.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace lumi {

/// What to copy: paths relative to the root, with a leading "/". Folders come before their contents.
struct ImportTree
{
    QString root;
    QStringList folders;
    QStringList files;
    QStringList leftOut = {}; ///< absolute paths of what the search had to leave out
};

/// None may be null.
struct ImportCallbacks
{
    /// Called with 1 after the folders are made, then with one more after each file.
    std::function<void(int step)> progress;
    std::function<bool()> isCardPresent;
    std::function<void(const QString &path, ImportKind kind)> fileFailed;
};

class ImportRun
{
public:
    ImportRun(ImportTree tree, ImportCallbacks callbacks);

    /// Ends at the first file that can't be copied, or when the card is no longer present. Goes on
    /// after a copy of another size. Entries that were left out are reported, too; the run then
    /// does not end with Done.
    /// @param folderName of the new folder; a number is appended if the name is taken
    [[nodiscard]] ImportKind run(const QString &folderName);

    /// Waits until all copies are on the disk. Call it after run() if anything was copied.
    /// A Cancel during the run does not end the wait; a new one does.
    /// @param runKind how the run ended. Cancelled, MemoryFull and AccessFailure are returned
    ///        unchanged. If the wait ends early, Done and Mismatch become Cancelled or AccessFailure
    [[nodiscard]] ImportKind waitForDisk(ImportKind runKind);

    /// Name of the folder that was made, or that could not be made.
    [[nodiscard]] QString folderName() const { return m_folderName; }

    /// Number of copied files, including those with a wrong size.
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

/// The kind for a result of copyFile() other than CopyDone.
/// @param roomKB free now, after the partial copy has been removed
/// @param sourceSize in bytes
[[nodiscard]] ImportKind kindOfFailure(int copyResult, int roomKB, qint64 sourceSize,
                                       bool isCardPresent);

} // namespace lumi
