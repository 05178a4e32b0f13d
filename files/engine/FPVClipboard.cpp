// SPDX-License-Identifier: MIT
#include "files/engine/FPVClipboard.h"

#include "app/common/Medium.h"
#include "app/common/diskSpace.h"
#include "app/common/paths.h"
#include "files/engine/FPVFileTree.h"
#include "files/engine/folderEntries.h"
#include "files/engine/rawCopy.h"
#include "items/FPVItemList.h"
#include "platform/files/fileCalls.h"
#include "platform/session/QuitRequest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

using lumi::PasteResult;

namespace {

/// Nothing is pasted unless more than this is free.
constexpr int kReserveKB = 10240;
constexpr int kLastNumber = 65534;

/// The path if it is free, else the path with a number before its last dot. The dot may also be
/// one of a folder's name. Null if no name is free or there is no dot.
QString freeName(const QString &path)
{
    if (!lumi::isTaken(path)) {
        return path;
    }
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    if (dot <= 0) {
        return {};
    }
    const QString stem = path.left(dot) + QLatin1Char('-');
    for (int n = 1; n <= kLastNumber; ++n) {
        QString candidate = stem + QString::number(n) + path.mid(dot);
        if (!lumi::isTaken(candidate)) {
            return candidate;
        }
    }
    return {};
}

QString folderOf(const QString &path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')));
}

/// The list recorded the medium of its folder before any event ran.
lumi::Medium mediumOf(const QString &folder, const FPVItemList *list)
{
    const bool isListed = list != nullptr && list->currentPath() == folder;
    return isListed ? list->medium() : lumi::Medium(folder);
}

void addItem(FPVItemList *list, const QString &path)
{
    FPVItemObject *item = list == nullptr ? nullptr : FPVItemList::makeItem(QFileInfo(path));
    if (item != nullptr) {
        item->setOwnerList(list);
        list->append(item);
    }
}

/// Copies only the photos that lie directly in the folder.
PasteResult pasteFolder(const lumi::ChosenFile &source, const QString &wanted, FPVItemList *list)
{
    FPVFileTree tree;
    FPVFileTree::setPatterns(QStringLiteral("*.jpg; *.jpeg"));
    const lumi::Medium medium = mediumOf(folderOf(wanted), list);
    tree.walk(source.path(), true, nullptr);
    // Events ran, so the card may have been exchanged.
    if (!medium.isThere() || !source.isStillIt()) {
        return PasteResult::Missing;
    }
    if (lumi::QuitRequest::isPending()) {
        return PasteResult::Done;
    }
    const QString target = uniquePath(wanted, "%03d", QChar());
    if (!QDir().mkdir(target)) {
        return PasteResult::TargetNotMade;
    }
    addItem(list, target);
    QStringList photos = tree.allFiles();
    for (QString &photo : photos) {
        photo.prepend(source.path());
    }
    FPVClipboard inner;
    inner.take(photos, false);
    return inner.paste(target, nullptr);
}

} // namespace

QStringList FPVClipboard::paths() const
{
    QStringList paths;
    std::transform(m_files.begin(), m_files.end(), std::back_inserter(paths),
                   [](const lumi::ChosenFile &file) {
                       return file.path();
                   });
    return paths;
}

void FPVClipboard::take(const QStringList &paths, bool cut)
{
    m_files = lumi::ChosenFile::all(paths);
    m_cut = cut;
}

PasteResult FPVClipboard::paste(const QString &folder, FPVItemList *list)
{
    m_buffer.reset(new (std::nothrow) char[kBufferSize]);
    const lumi::Medium medium = mediumOf(folder, list);
    PasteResult result = PasteResult::Done;
    for (const lumi::ChosenFile &file : std::as_const(m_files)) {
        if (result != PasteResult::Done || lumi::QuitRequest::isPending()) {
            break;
        }
        result = medium.isThere() ? pastePath(file, folder, list) : PasteResult::Missing;
    }
    m_buffer.reset();
    if (m_cut) {
        m_files.clear();
    }
    return result;
}

PasteResult FPVClipboard::pastePath(const lumi::ChosenFile &source, const QString &folder,
                                    FPVItemList *list) const
{
    const QFileInfo info(source.path());
    const QString name = info.fileName();
    if (!info.isDir()) {
        const QLatin1String slash(folder.endsWith(QLatin1Char('/')) ? "" : "/");
        return pasteFile(source, folder + slash + name, list);
    }
    if (name == QLatin1String(".") || name == QLatin1String("..")) {
        return PasteResult::Done;
    }
    return pasteFolder(source, folder + QLatin1Char('/') + name, list);
}

PasteResult FPVClipboard::pasteFile(const lumi::ChosenFile &chosen, const QString &wanted,
                                    FPVItemList *list) const
{
    if (m_buffer == nullptr) {
        return PasteResult::NoBuffer;
    }
    const QString &source = chosen.path();
    if (!QFile::exists(source) || !chosen.isStillIt()) {
        return PasteResult::Missing;
    }
    // Cards ignore case, so one folder may be spelled "dcim" and "DCIM".
    if (m_cut && lumi::areOneFile(folderOf(source), folderOf(wanted))) {
        return PasteResult::Done;
    }
    if (freeDiskKB(QFile::encodeName(folderOf(wanted))) <= kReserveKB) {
        return PasteResult::NoRoom;
    }
    const QString target = freeName(wanted);
    if (target.isNull()) {
        return PasteResult::TargetNotMade;
    }
    const PasteResult result = lumi::rawCopy(source, target, m_cut);
    if (result != PasteResult::Done) {
        return result;
    }
    addItem(list, target);
    if (m_cut && !QFile::remove(source)) {
        return PasteResult::SourceNotRemoved;
    }
    return PasteResult::Done;
}
