// SPDX-License-Identifier: MIT
#include "import/ImportRun.h"

#include "app/common/diskSpace.h"
#include "app/common/paths.h"
#include "files/engine/copyFile.h"
#include "platform/files/diskSync.h"
#include "views/folderRoots.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

using lumi::ImportKind;

namespace {

constexpr unsigned kBlockBytes = 16384;
constexpr qint64 kBytesOfKB = 1024;
constexpr const char *kFolderNumber = "%03d";
constexpr const char *kFileNumber = "-%d";

ImportKind kindOfFolderFailure()
{
    return lumi::freeDocumentsKB() < 1 ? ImportKind::MemoryFull : ImportKind::AccessFailure;
}

ImportKind makeFolder(const QString &path)
{
    return QDir().mkdir(path) ? ImportKind::Done : kindOfFolderFailure();
}

/// False if the source no longer exists, even for an empty copy.
bool isSameSize(const QString &source, const QString &target)
{
    const QFileInfo from(source);
    const QFileInfo to(target);
    return from.exists() && to.exists() && from.size() == to.size();
}

} // namespace

ImportKind lumi::kindOfFailure(int copyResult, int roomKB, qint64 sourceSize, bool isCardPresent)
{
    if (!isCardPresent) {
        return ImportKind::AccessFailure;
    }
    switch (copyResult) {
    case CopyStopped:
        return ImportKind::Cancelled;
    case QFileDevice::ResourceError:
        return ImportKind::MemoryFull;
    case QFileDevice::WriteError:
    case QFileDevice::OpenError:
        return roomKB < sourceSize / kBytesOfKB ? ImportKind::MemoryFull
                                                : ImportKind::AccessFailure;
    default:
        return ImportKind::AccessFailure;
    }
}

lumi::ImportRun::ImportRun(ImportTree tree, ImportCallbacks callbacks)
    : m_tree(std::move(tree))
    , m_callbacks(std::move(callbacks))
{ }

ImportKind lumi::ImportRun::run(const QString &folderName)
{
    m_copiedCount = 0;
    ImportKind kind = makeTarget(folderName);
    if (kind == ImportKind::Done) {
        kind = makeFolders();
    }
    if (kind != ImportKind::Done) {
        return kind;
    }
    m_callbacks.progress(1);
    return copyAll();
}

ImportKind lumi::ImportRun::makeTarget(const QString &folderName)
{
    m_folderName = folderName;
    const QString store = photoStorePath();
    if (!QFileInfo(store).isWritable()) {
        return ImportKind::AccessFailure;
    }
    // It must be a name, not a path out of the store or into another folder.
    if (folderName.contains(QLatin1Char('/'))) {
        return kindOfFolderFailure();
    }
    m_target = uniquePath(store + QLatin1Char('/') + folderName, kFolderNumber, QChar());
    m_folderName = m_target.mid(m_target.lastIndexOf(QLatin1Char('/')) + 1);
    return makeFolder(m_target);
}

ImportKind lumi::ImportRun::makeFolders() const
{
    for (const QString &relPath : m_tree.folders) {
        const QString path = m_target + relPath;
        ImportKind kind = ImportKind::Done;
        if (!QFile::exists(path)) {
            kind = makeFolder(path);
        } else if (!QFileInfo(path).isWritable()) {
            kind = ImportKind::AccessFailure;
        }
        if (kind != ImportKind::Done) {
            return kind;
        }
    }
    return ImportKind::Done;
}

ImportKind lumi::ImportRun::copyAll()
{
    ImportKind runKind = ImportKind::Done;
    for (const QString &path : std::as_const(m_tree.leftOut)) {
        m_callbacks.fileFailed(path, ImportKind::AccessFailure);
        runKind = ImportKind::Mismatch; // the run goes on and its report is offered
    }
    int step = 1;
    for (const QString &relPath : std::as_const(m_tree.files)) {
        const ImportKind kind = copyOne(relPath);
        if (kind != ImportKind::Done) {
            m_callbacks.fileFailed(m_tree.root + relPath, kind);
            runKind = kind;
        }
        if (kind != ImportKind::Done && kind != ImportKind::Mismatch) {
            return kind;
        }
        ++m_copiedCount;
        m_callbacks.progress(++step);
    }
    return runKind;
}

ImportKind lumi::ImportRun::copyOne(const QString &relPath) const
{
    const QString source = m_tree.root + relPath;
    // Another card may have photos with the names of those that are still to be copied.
    if (!m_callbacks.isCardPresent()) {
        return ImportKind::AccessFailure;
    }
    const QString target = uniquePath(m_target + relPath, kFileNumber, QLatin1Char('.'));
    const int result = copyFile(source, target, false, true, copyKeepGoing, kBlockBytes);
    if (result != CopyDone) {
        return kindOfFailure(result, freeDocumentsKB(), QFileInfo(source).size(),
                             m_callbacks.isCardPresent());
    }
    if (!isSameSize(source, target)) {
        QFile::remove(target); // made by this copy, which refuses existing files
        return ImportKind::Mismatch;
    }
    startWriteBack(target, copyKeepGoing);
    return ImportKind::Done;
}

ImportKind lumi::ImportRun::waitForDisk(ImportKind runKind)
{
    if (runKind == ImportKind::Cancelled) {
        setCopyCancelled(false);
    }
    const SyncResult result = lumi::waitForDisk(m_target, copyKeepGoing);
    if (result == SyncResult::OnDisk) {
        return runKind;
    }
    const ImportKind kind
        = result == SyncResult::Stopped ? ImportKind::Cancelled : ImportKind::AccessFailure;
    m_callbacks.fileFailed(m_target, kind);
    const bool isOpen = runKind == ImportKind::Done || runKind == ImportKind::Mismatch;
    return isOpen ? kind : runKind;
}
