// SPDX-License-Identifier: MIT
#include "items/FPVItemList.h"

#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "items/FPVItemFolder.h"
#include "items/FPVItemJpeg.h"
#include "platform/session/QuitRequest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>

using lumi::ListResult;

namespace {

bool isPhotoName(const QFileInfo &info)
{
    const QString suffix = info.suffix();
    return suffix.compare(QLatin1String("jpg"), Qt::CaseInsensitive) == 0
        || suffix.compare(QLatin1String("jpeg"), Qt::CaseInsensitive) == 0;
}

} // namespace

bool FPVItemList::s_rootMissing = false;

FPVItemList::FPVItemList()
    : m_rootPath(QStringLiteral("/"))
{
    setAutoDelete(true);
}

FPVItemList::FPVItemList(const QString &path, const QString &root)
    : FPVItemList()
{
    load(path, root);
}

ListResult FPVItemList::load(const QString &path, const QString &root)
{
    if (s_rootMissing) {
        return ListResult::RootMissing;
    }
    if (!root.isEmpty()) {
        m_rootPath = QDir(root).absolutePath();
    }
    if (!QFile::exists(m_rootPath)) {
        return reportMissingRoot();
    }
    // After Up the path ends in "sub/..". It is found even if "sub" was deleted or renamed.
    const QDir folder(QDir::cleanPath(path));
    if (!folder.exists()) {
        return ListResult::PathMissing;
    }
    clear();
    m_currentPath = folder.absolutePath();
    m_medium = lumi::Medium(m_currentPath);
    const QFileInfoList entries
        = QDir(m_currentPath)
              .entryInfoList(QDir::Dirs | QDir::Files | QDir::NoSymLinks | QDir::Readable,
                             QDir::Name | QDir::DirsFirst);
    for (const QFileInfo &entry : entries) {
        FPVItemObject *item = makeItem(entry);
        if (item != nullptr) {
            item->setOwnerList(this);
            append(item);
        }
    }
    return ListResult::Listed;
}

FPVItemObject *FPVItemList::makeItem(const QFileInfo &info)
{
    const QString name = info.fileName();
    if (name == QLatin1String(".") || name == QLatin1String("..")) {
        return nullptr;
    }
    if (info.isDir()) {
        return new FPVItemFolder(info.filePath(), QString(), false);
    }
    // Reading a pipe or a device named like a photo would block.
    const bool isOther = info.exists() && !info.isFile();
    if (isOther || !isPhotoName(info)) {
        return nullptr;
    }
    return new FPVItemJpeg(info.filePath(), QString(), false);
}

/// The flag is set before the box, whose event loop may try to load again.
ListResult FPVItemList::reportMissingRoot()
{
    s_rootMissing = true;
    if (!lumi::QuitRequest::isPending()) {
        QMessageBox::critical(nullptr, msg(lumi::MsgError), msg(lumi::MsgPhotoFilesMissing));
    }
    QCoreApplication::exit(0);
    return ListResult::RootMissing;
}
