// SPDX-License-Identifier: MIT
#include "files/engine/FPVFileTree.h"

#include "files/engine/lostEntries.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

struct WalkState
{
    QString rootPrefix;
    QStringList patterns{QStringLiteral("*")};
    bool walkCancelled = false;
    int fileCount = 0;
    int byteCount = 0;
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

bool leadsDown(const QFileInfo &folder)
{
    const QString name = folder.fileName();
    return !folder.isSymLink() && name != QLatin1String(".") && name != QLatin1String("..");
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
    return state().walkCancelled;
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
    const QFileInfoList entries
        = QDir(path, QString(), QDir::Name | QDir::IgnoreCase, QDir::Filters(state().dirFilter))
              .entryInfoList();
    lumi::warnOfLostEntries(path);
    const QList<QRegularExpression> wildcards = wildcardsOf(state().patterns);
    for (const QFileInfo &entry : entries) {
        QCoreApplication::processEvents();
        if (state().walkCancelled) {
            break;
        }
        if (entry.isFile()) {
            takeFile(entry, wildcards);
        } else if (entry.isDir() && !flat && leadsDown(entry)) {
            m_children.emplace_back();
            m_children.back().walk(path + QLatin1Char('/') + entry.fileName(), flat, this);
        }
    }
    return true;
}

void FPVFileTree::takeFile(const QFileInfo &entry, const QList<QRegularExpression> &wildcards)
{
    const QString name = entry.fileName();
    const bool isWanted
        = std::any_of(wildcards.begin(), wildcards.end(), [&name](const QRegularExpression &w) {
              return w.match(name).hasMatch();
          });
    if (isWanted) {
        m_files.append(name);
        ++state().fileCount;
        state().byteCount = wrappedSum(state().byteCount, entry.size());
    }
}

void FPVFileTree::clear()
{
    m_children.clear();
    m_files.clear();
    state().walkCancelled = false;
    state().fileCount = 0;
    state().byteCount = 0;
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
