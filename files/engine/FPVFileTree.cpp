// SPDX-License-Identifier: MIT
#include "files/engine/FPVFileTree.h"

#include "files/engine/folderListing.h"
#include "platform/session/QuitRequest.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

#include <algorithm>

using lumi::FolderEntry;

namespace {

struct WalkState
{
    QString rootPrefix;
    QStringList patterns{QStringLiteral("*")};
    bool walkCancelled = false;
    int fileCount = 0;
    int byteCount = 0;
    QStringList leftOut;
    int dirFilter = QDir::Dirs | QDir::Files | QDir::NoSymLinks | QDir::Readable;
};

WalkState &state()
{
    static WalkState theState;
    return theState;
}

int wrappedSum(int sum, qint64 size)
{
    return static_cast<int>(static_cast<quint32>(sum) + static_cast<quint32>(size));
}

QList<QRegularExpression> wildcardsOf(const QStringList &patterns)
{
    QList<QRegularExpression> wildcards;
    for (const QString &pattern : patterns) {
        wildcards.append(
            QRegularExpression(QRegularExpression::wildcardToRegularExpression(pattern),
                               QRegularExpression::CaseInsensitiveOption));
    }
    return wildcards;
}

QDir::Filters filters()
{
    return QDir::Filters(state().dirFilter);
}

bool isSeen(const FolderEntry &entry)
{
    const bool isHidden = entry.name.startsWith(QLatin1Char('.'));
    return (!isHidden || filters().testFlag(QDir::Hidden))
        && (!entry.isLink || !filters().testFlag(QDir::NoSymLinks));
}

bool matches(const QString &name, const QList<QRegularExpression> &wildcards)
{
    return std::any_of(wildcards.begin(), wildcards.end(), [&name](const QRegularExpression &w) {
        return w.match(name).hasMatch();
    });
}

/// Whether the walk includes the entry if it can be read.
bool isWanted(const FolderEntry &entry, bool flat, const QList<QRegularExpression> &wildcards)
{
    if (!isSeen(entry)) {
        return false;
    }
    switch (entry.kind) {
    case FolderEntry::File:
        return filters().testFlag(QDir::Files) && matches(entry.name, wildcards);
    case FolderEntry::Folder:
        return filters().testFlag(QDir::Dirs) && !flat && !entry.isLink;
    case FolderEntry::Unknown:
        return true;
    case FolderEntry::Other:
        break;
    }
    return false;
}

bool canBeRead(const FolderEntry &entry)
{
    return entry.isText && entry.kind != FolderEntry::Unknown
        && (entry.isReadable || !filters().testFlag(QDir::Readable));
}

/// A file outside the root is not part of the card, even if a link points to it.
bool staysInside(const FolderEntry &entry)
{
    return !entry.isLink || lumi::leadsInto(state().rootPrefix, entry.path);
}

void leaveOut(const QString &path, bool flat)
{
    state().leftOut.append(path);
    if (flat) { // callers of flat walks do not ask leftOut()
        qWarning("%s can't be read and is left out", qPrintable(path));
    }
}

} // namespace

void FPVFileTree::setPatterns(const QString &wildcards)
{
    static const QRegularExpression kSeparators(QStringLiteral("[; ]+"));
    state().patterns = wildcards.split(kSeparators, Qt::SkipEmptyParts);
}

QStringList FPVFileTree::patterns()
{
    return state().patterns;
}

void FPVFileTree::setDirFilter(int filter)
{
    state().dirFilter = filter;
}

int FPVFileTree::dirFilter()
{
    return state().dirFilter;
}

void FPVFileTree::setWalkCancelled(bool cancelled)
{
    state().walkCancelled = cancelled;
}

bool FPVFileTree::walkCancelled()
{
    return state().walkCancelled || lumi::QuitRequest::isPending();
}

QString FPVFileTree::rootPrefix()
{
    return state().rootPrefix;
}

int FPVFileTree::fileCount()
{
    return state().fileCount;
}

int FPVFileTree::byteCount()
{
    return state().byteCount;
}

QStringList FPVFileTree::leftOut()
{
    return state().leftOut;
}

void FPVFileTree::resetState()
{
    state() = WalkState();
}

bool FPVFileTree::walk(const QString &path, bool flat, FPVFileTree *parent)
{
    m_relPath = path;
    if (parent == nullptr) {
        clear();
        state().rootPrefix = path;
    }
    m_relPath.remove(0, state().rootPrefix.size());
    const lumi::FolderNames listing = lumi::namesIn(path);
    if (!listing.isWhole) {
        leaveOut(path, flat);
    }
    const QList<QRegularExpression> wildcards = wildcardsOf(state().patterns);
    for (const QByteArray &name : listing.names) {
        QCoreApplication::processEvents();
        if (walkCancelled()) {
            break;
        }
        const FolderEntry entry = lumi::entryOf(path, name);
        if (isWanted(entry, flat, wildcards)) {
            take(entry, flat);
        }
    }
    return true;
}

void FPVFileTree::take(const FolderEntry &entry, bool flat)
{
    if (!canBeRead(entry) || !(flat || staysInside(entry))) {
        leaveOut(entry.path, flat);
    } else if (entry.kind == FolderEntry::Folder) {
        m_children.emplace_back();
        m_children.back().walk(entry.path, flat, this);
    } else {
        m_files.append(entry.name);
        ++state().fileCount;
        state().byteCount = wrappedSum(state().byteCount, entry.size);
    }
}

void FPVFileTree::clear()
{
    m_children.clear();
    m_files.clear();
    state().walkCancelled = false;
    state().fileCount = 0;
    state().byteCount = 0;
    state().leftOut.clear();
}

QStringList FPVFileTree::folders() const
{
    QStringList list;
    appendFolders(&list);
    return list;
}

void FPVFileTree::appendFolders(QStringList *list) const
{
    for (const FPVFileTree &child : m_children) {
        list->append(child.m_relPath);
        child.appendFolders(list);
    }
}

QStringList FPVFileTree::allFiles() const
{
    QStringList list;
    appendFiles(&list);
    return list;
}

void FPVFileTree::appendFiles(QStringList *list) const
{
    for (const QString &name : m_files) {
        list->append(m_relPath + QLatin1Char('/') + name);
    }
    for (const FPVFileTree &child : m_children) {
        child.appendFiles(list);
    }
}
