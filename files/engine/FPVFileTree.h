// SPDX-License-Identifier: MIT
// The result of a walk through a folder: a tree of relative names without sizes or dates, so that
// a card with thousands of photos needs little memory.
// The options of walks (name patterns, kinds of entries) and the results of the last walk (its
// root, number and sum of files) are static: the form reads and cancels the running walk through
// them. A top-level walk and clear() reset the results. The options apply to all later walks and
// are never reset.
// Owns: the nodes of its subfolders.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace lumi {
struct FolderEntry;
} // namespace lumi

class FPVFileTree
{
public:
    /// Case-insensitive wildcards, separated by blanks and semicolons.
    static void setPatterns(const QString &wildcards);
    [[nodiscard]] static QStringList patterns();
    /// QDir::Filters bits. Dirs, Files, NoSymLinks, Readable and Hidden have an effect.
    static void setDirFilter(int filter);
    [[nodiscard]] static int dirFilter();
    /// Stops the running walk at its next entry. The start of a walk resets the flag.
    static void setWalkCancelled(bool cancelled);
    /// Also true if the program is asked to end.
    [[nodiscard]] static bool walkCancelled();
    /// Absolute path of the last walk's root; null before the first.
    [[nodiscard]] static QString rootPrefix();
    /// Number of files found by the last walk so far.
    [[nodiscard]] static int fileCount();
    /// Sum of their sizes, in 32 bits: it wraps around above 2147483647.
    [[nodiscard]] static int byteCount();
    /// What the last walk had to leave out so far: absolute paths of files and folders that can't
    /// be read or whose names are not valid text (bytes above 127 as %XX), of folders that could
    /// not be listed completely, and of links to files outside the root.
    [[nodiscard]] static QStringList leftOut();
    /// Resets everything to the state at the start of the process, for tests.
    static void resetState();

    /// Fills this node with the folder and, unless flat, all folders below it. Events run at
    /// each entry. Links to folders are not followed. Entries that are neither folders nor regular
    /// files are ignored. A flat walk follows links to files outside, and logs what it leaves out.
    /// Always true: a cancelled walk keeps what it has found.
    /// @param parent null for the root of a tree
    bool walk(const QString &path, bool flat, FPVFileTree *parent);
    /// Relative paths of all folders below this one, each before its contents.
    [[nodiscard]] QStringList folders() const;
    /// Relative paths of all files, those of this folder first. rootPrefix() makes them absolute.
    [[nodiscard]] QStringList allFiles() const;
    /// Empties the node and resets the cancel flag and the results of the walk.
    void clear();

    /// The folder relative to the walk's root, with a leading "/"; empty for the root.
    [[nodiscard]] QString relPath() const { return m_relPath; }

    /// In walk order.
    [[nodiscard]] const std::vector<FPVFileTree> &children() const { return m_children; }

    /// Names in this folder, in walk order.
    [[nodiscard]] const QStringList &files() const { return m_files; }

private:
    void take(const lumi::FolderEntry &entry, bool flat);
    void appendFolders(QStringList *list) const;
    void appendFiles(QStringList *list) const;

    QString m_relPath;
    std::vector<FPVFileTree> m_children;
    QStringList m_files;
};
