// SPDX-License-Identifier: MIT
// What the File and Edit menus do with photos and folders: each asks its question, lets the
// view do the work and shows its failure. Dialogs let events in, so that the list may have been
// read anew when they are answered: what was asked about is kept by name, and the form is busy
// meanwhile. Should it be gone all the same, it is not touched again.
#include "app/common/BusyScope.h"
#include "app/common/getText.h"
#include "app/common/labels.h"
#include "app/common/messages.h"
#include "files/FormFile.h"
#include "files/fileBoxes.h"
#include "files/pasteMessage.h"
#include "items/FPVItemList.h"
#include "views/FPVThumbnailView.h"

#include <QFileInfo>

namespace {

/// Of a name in a question, in widths of an "X".
constexpr int kNameLength = 20;

/// A name as it is offered for editing, and what is put behind it again: a photo keeps its
/// extension.
struct EditedName
{
    explicit EditedName(const QFileInfo &info)
        : old(info.fileName())
        , offered(info.isFile() ? info.baseName() : old)
        , tail(info.isFile() ? QString(QLatin1Char('.') + info.suffix()) : QString())
    { }

    QString old;
    QString offered;
    QString tail;
};

} // namespace

void FormFile::menu_file_NewFolder()
{
    const lumi::BusyScope busy(this);
    const lumi::Medium medium = mediumOnShow();
    const QPointer<FormFile> alive(this);
    while (alive) {
        const QString name
            = getText(this, msg(lumi::MsgNewFolder), msg(lumi::MsgEnterFolderName), QString(), 0);
        if (name.isNull()) {
            return;
        }
        if (name.isEmpty()) {
            lumi::showError(this, msg(lumi::MsgEnterFolderName));
        } else if (m_view->hasEntry(name)) {
            lumi::showError(this, msg(lumi::MsgFolderAlreadyExists));
        } else {
            if (!medium.isThere() || !m_view->makeFolder(name)) {
                lumi::showError(this, msg(lumi::MsgFolderNotCreated));
            }
            if (alive) {
                enterFolder(QString());
            }
            return;
        }
    }
}

void FormFile::menu_file_Rename()
{
    const FPVItemObject *item = currentItem();
    if (item == nullptr) {
        return;
    }
    const lumi::BusyScope busy(this);
    const EditedName name{QFileInfo(item->path())};
    const QString folder = m_rootItem->currentPath();
    const lumi::Medium medium = mediumOnShow();
    const QPointer<FormFile> alive(this);
    while (alive) {
        const QString text = getText(this, msg(lumi::MsgChangeName),
                                     msg(lumi::MsgEnterNewFolderName), name.offered, 0);
        const QString wanted = text + name.tail;
        if (text.isNull()) {
            return;
        }
        if (text.isEmpty()) {
            lumi::showError(this, msg(lumi::MsgEnterNewFolderName));
        } else if (wanted == name.old) {
            return;
        } else if (m_rootItem->currentPath() == folder && m_view->hasEntry(wanted)) {
            lumi::showError(this, msg(lumi::MsgFileNameExists));
        } else {
            const bool isThere = m_rootItem->currentPath() == folder && medium.isThere();
            if (isThere && m_view->renameItem(name.old, wanted)) {
                enterFolder(QString());
            } else {
                lumi::showError(this, msg(lumi::MsgRename));
            }
            return;
        }
    }
}

void FormFile::menu_file_Delete()
{
    const FPVItemObject *item = currentItem();
    if (item == nullptr) {
        return;
    }
    const lumi::BusyScope busy(this);
    const QString path = item->path();
    const lumi::Medium medium = mediumOnShow();
    const QString name = elideToChars(this, item->fileName(), kNameLength);
    if (!lumi::confirms(this, msg(lumi::MsgDelete), msg(lumi::MsgNameWillBeDeleted).arg(name))) {
        return;
    }
    const QPointer<FormFile> alive(this);
    const bool isDeleted = lumi::underWait(this, [this, &path, &medium] {
        const FPVItemObject *present = currentItem();
        const bool isSame = present != nullptr && present->path() == path && medium.isThere();
        return isSame && m_view->deleteCurrent();
    });
    if (alive && !isDeleted) {
        lumi::showError(this, msg(lumi::MsgDeletionFailed));
    }
    if (alive) {
        enterFolder(QString());
    }
}

void FormFile::menu_file_DeleteCheckItem()
{
    const lumi::BusyScope busy(this);
    if (!lumi::confirms(this, msg(lumi::MsgDeleteSelected), msg(lumi::MsgDeleteThesePhotos))) {
        return;
    }
    const QPointer<FormFile> alive(this);
    const bool isAnyDeleted = lumi::underWait(this, [this] {
        return m_view->deleteChecked();
    });
    if (alive && !isAnyDeleted) {
        lumi::showError(this, msg(lumi::MsgPartNotDeleted));
    }
    if (alive) {
        showName(currentItem());
    }
}

void FormFile::menu_file_DeleteEmptyFolder()
{
    const lumi::BusyScope busy(this);
    const lumi::Medium medium = mediumOnShow();
    if (!lumi::confirms(this, msg(lumi::MsgDeleteEmptyFolder), msg(lumi::MsgDeleteThisFolder))) {
        return;
    }
    const QPointer<FormFile> alive(this);
    const bool isDone = lumi::underWait(this, [this, &medium] {
        return medium.isThere() && m_view->deleteEmptyFolders();
    });
    if (alive && !isDone) {
        lumi::showError(this, msg(lumi::MsgFolderDeletionFailed));
    }
    if (alive) {
        enterFolder(QString());
    }
}

void FormFile::menu_edit_Cut()
{
    m_view->cutCurrent();
}

void FormFile::menu_edit_Copy()
{
    m_view->copyCurrent();
}

void FormFile::menu_edit_CutCheckItem()
{
    m_view->cutChecked();
}

void FormFile::menu_edit_CopyCheckItem()
{
    m_view->copyChecked();
}

void FormFile::menu_edit_Paste()
{
    if (m_view->clipboardPaths().isEmpty()) {
        return;
    }
    const lumi::BusyScope busy(this);
    const QPointer<FormFile> alive(this);
    const lumi::PasteResult result = lumi::underWait(this, [this] {
        return m_view->paste();
    });
    if (alive && result != lumi::PasteResult::Done) {
        lumi::showError(this, msg(lumi::pasteMessage(result)));
    }
}

void FormFile::menu_edit_CheckAll()
{
    m_view->checkAll();
}

void FormFile::menu_edit_ReleaseCheck()
{
    m_view->uncheckAll();
}
