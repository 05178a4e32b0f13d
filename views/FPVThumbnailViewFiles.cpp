// SPDX-License-Identifier: MIT
// File work on the folder. The form asks and tells the user.
#include "files/engine/folderEntries.h"
#include "items/FPVItemList.h"
#include "views/FPVThumbnailView.h"

#include <algorithm>

bool FPVThumbnailView::hasFolder() const
{
    return m_list != nullptr && !m_list->currentPath().isEmpty();
}

bool FPVThumbnailView::hasEntry(const QString &name) const
{
    return hasFolder() && lumi::hasEntry(m_list->currentPath(), name);
}

/// Another card may hold a folder and photos of the same names.
bool FPVThumbnailView::isOnItsMedium() const
{
    return hasFolder() && m_list->medium().isThere();
}

bool FPVThumbnailView::makeFolder(const QString &name)
{
    return isOnItsMedium() && lumi::makeFolder(m_list->currentPath(), name);
}

bool FPVThumbnailView::renameItem(const QString &oldName, const QString &newName)
{
    return isOnItsMedium() && lumi::renameEntry(m_list->currentPath(), oldName, newName);
}

bool FPVThumbnailView::deleteCurrent()
{
    const FPVItemObject *item = currentObject();
    if (item == nullptr || !item->isPicture() || !isOnItsMedium()
        || !lumi::removePhoto(item->path())) {
        return false;
    }
    m_list->remove(m_currentIndex);
    if (m_topIndex >= itemCount()) {
        m_topIndex = std::max(0, itemCount() - grid().visibleCount());
    }
    showPage(m_topIndex, -1, true);
    return true;
}

bool FPVThumbnailView::deleteChecked()
{
    bool anyRemoved = false;
    int index = 0;
    while (index < itemCount()) {
        FPVItemObject *item = m_list->at(index);
        const bool isWanted = item->isChecked() && item->isPicture() && isOnItsMedium();
        if (isWanted && lumi::removePhoto(item->path())) {
            m_list->remove(index);
            anyRemoved = true;
            continue;
        }
        if (!item->isPicture()) {
            item->setChecked(false);
        }
        ++index;
    }
    if (anyRemoved) {
        showPage(0, -1, true);
    }
    return anyRemoved;
}

bool FPVThumbnailView::deleteEmptyFolders()
{
    if (!isOnItsMedium()) {
        return false;
    }
    lumi::removeEmptyFolders(m_list->currentPath());
    return true;
}

void FPVThumbnailView::copyCurrent()
{
    const FPVItemObject *item = currentObject();
    if (item != nullptr && (item->isPicture() || item->isFolder())) {
        m_clipboard.take({item->path()}, false);
    }
}

void FPVThumbnailView::cutCurrent()
{
    const FPVItemObject *item = currentObject();
    if (item != nullptr && item->isPicture()) {
        m_clipboard.take({item->path()}, true);
    }
}

void FPVThumbnailView::copyChecked()
{
    takeChecked(false);
}

void FPVThumbnailView::cutChecked()
{
    takeChecked(true);
}

void FPVThumbnailView::takeChecked(bool cut)
{
    if (!anyChecked()) {
        return;
    }
    QStringList paths;
    for (const FPVItemObject *item : *m_list) {
        if (item->isChecked()) {
            paths.append(item->path());
        }
    }
    m_clipboard.take(paths, cut);
}

lumi::PasteResult FPVThumbnailView::paste()
{
    if (!hasFolder()) {
        return lumi::PasteResult::Missing;
    }
    const int before = itemCount();
    const lumi::PasteResult result = m_clipboard.paste(m_list->currentPath(), m_list);
    if (itemCount() > before) {
        showPage(before, before, true);
    }
    return result;
}

void FPVThumbnailView::checkAll()
{
    setChecks(true);
}

void FPVThumbnailView::uncheckAll()
{
    setChecks(false);
}

void FPVThumbnailView::setChecks(bool on)
{
    if (m_list == nullptr) {
        return;
    }
    for (FPVItemObject *item : *m_list) {
        item->setChecked(on && item->isPicture());
    }
    showPage(m_topIndex, -1, true);
}
