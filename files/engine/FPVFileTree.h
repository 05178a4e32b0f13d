// SPDX-License-Identifier: MIT
// A folder as a tree of relative names: what a walk through it found, without sizes or dates,
// so that a card with thousands of photos costs little more than its names.
// How to walk (name patterns, kinds of entries) and what the last walk found (its root, number
// and sum of files) is one set for the whole process: the form that shows the sums talks with
// the running walk through it, and it outlives every form. Nothing but a top-level walk and
// clear() takes it back: patterns and entry kinds, once set, hold for all later walks.
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
    /// Wildcards without regard to case, separated by blanks and semicolons.
    static void setPatterns(const QString &wildcards);
    [[nodiscard]] static QStringList patterns();
    /// QDir::Filters bits of the entries that are looked at: Dirs, Files, NoSymLinks, Readable
    /// and Hidden count.
    static void setDirFilter(int filter);
    [[nodiscard]] static int dirFilter();
    /// Stops the running walk at its next entry. A walk that starts takes the flag back.
    static void setWalkCancelled(bool cancelled);
    [[nodiscard]] static bool walkCancelled();
    /// Absolute path of the last walk's root; null before the first.
    [[nodiscard]] static QString rootPrefix();
    /// Files taken by the last walk, so far.
    [[nodiscard]] static int fileCount();
    /// Sum of their sizes, in 32 bits: it wraps round beyond 2147483647.
    [[nodiscard]] static int byteCount();
    /// What the last walk was to take and could not, so far: absolute paths of files and folders
    /// that can't be read or whose names are not valid text (bytes above 127 as %XX), of folders
    /// that could not be listed to their end, and of links to files outside the root.
    [[nodiscard]] static QStringList leftOut();
    /// Everything as at the start of the process, for tests.
    static void resetState();

    /// Fills this node with the folder and, unless flat, all folders below it. Events run at
    /// each entry. Links to folders are not followed; what is neither folder nor regular file
    /// is passed over. parent: null for the root of a tree. Always true: a cancelled walk keeps
    /// what it has, and leftOut() tells what is missing. A flat walk follows links to files
    /// outside, and warns of what it leaves out.
    bool walk(const QString &path, bool flat, FPVFileTree *parent);
    /// Relative paths of all folders below this one, each before what it holds.
    [[nodiscard]] QStringList folders() const;
    /// Relative paths of all files, the own ones first. With rootPrefix() before it, each is
    /// absolute.
    [[nodiscard]] QStringList allFiles() const;
    /// Empties the node and sets flag and sums of the walk back.
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
