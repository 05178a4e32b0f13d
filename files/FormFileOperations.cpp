// SPDX-License-Identifier: MIT
// The entries of the File and Edit menus: each asks its question, lets the view do the work and
// reports a failure. Events run while a dialog is open, so that the cursor or the list may change.
// Therefore the entries keep the name and the medium of the item that they have asked about.
#include "app/common/BusyScope.h"
#include "app/common/getText.h"
#include "app/common/labels.h"
#include "app/common/messages.h"
#include "files/FormFile.h"
#include "items/FPVItemList.h"
#include "views/FPVThumbnailView.h"
#include "widgets/messageBoxes.h"

#include <QFileInfo>

#include <functional>

namespace {

/// Longest name in a question, in widths of an "X".
constexpr int kNameLength = 20;

/// The part of a name that the user edits, and the part that follows it: a photo keeps its
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

struct NameQuestion
{
    lumi::MessageId caption;
    lumi::MessageId label; ///< also the error message for an empty name
    lumi::MessageId taken;
    QString offered = {};
};

/// Asks until the name is neither empty nor taken. Null if the user cancels.
QString askName(QWidget *form, const NameQuestion &question,
                const std::function<bool(const QString &)> &isTaken)
{
    for (;;) {
        QString name
            = getText(form, msg(question.caption), msg(question.label), question.offered, 0);
        const bool isEmpty = name.isEmpty();
        if (name.isNull() || (!isEmpty && !isTaken(name))) {
            return name;
        }
        lumi::tellError(form, msg(isEmpty ? question.label : question.taken));
    }
}

struct DeletionTexts
{
    lumi::MessageId caption;
    QString question;
    lumi::MessageId failure;
};

/// Asks, deletes while the wait dialog is shown, and reports a failure. False if the answer was No.
bool deleteIfConfirmed(QWidget *form, const DeletionTexts &texts,
                       const std::function<bool()> &remove)
{
    if (!lumi::confirm(form, msg(texts.caption), texts.question)) {
        return false;
    }
    if (!lumi::underWait(form, remove)) {
        lumi::tellError(form, msg(texts.failure));
    }
    return true;
}

} // namespace

void FormFile::menu_file_NewFolder()
{
    const lumi::BusyScope busy(this);
    const lumi::Medium medium = mediumOnShow();
    const NameQuestion question{lumi::MsgNewFolder, lumi::MsgEnterFolderName,
                                lumi::MsgFolderAlreadyExists};
    const QString name = askName(this, question, [this](const QString &text) {
        return m_view->hasEntry(text);
    });
    if (name.isNull()) {
        return;
    }
    if (!medium.isThere() || !m_view->makeFolder(name)) {
        lumi::tellError(this, msg(lumi::MsgFolderNotCreated));
    }
    enterFolder(QString());
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
    const NameQuestion question{lumi::MsgChangeName, lumi::MsgEnterNewFolderName,
                                lumi::MsgFileNameExists, name.offered};
    const QString text = askName(this, question, [this, &name](const QString &typed) {
        const QString wanted = typed + name.tail;
        return wanted != name.old && m_view->hasEntry(wanted);
    });
    const QString wanted = text + name.tail;
    if (text.isNull() || wanted == name.old) {
        return;
    }
    const bool isThere = m_rootItem->currentPath() == folder && medium.isThere();
    if (isThere && m_view->renameItem(name.old, wanted)) {
        enterFolder(QString());
    } else {
        lumi::tellError(this, msg(lumi::MsgRename));
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
    const DeletionTexts texts{lumi::MsgDelete, msg(lumi::MsgNameWillBeDeleted).arg(name),
                              lumi::MsgDeletionFailed};
    const bool isConfirmed = deleteIfConfirmed(this, texts, [this, &path, &medium] {
        const FPVItemObject *present = currentItem();
        const bool isSame = present != nullptr && present->path() == path && medium.isThere();
        return isSame && m_view->deleteCurrent();
    });
    if (isConfirmed) {
        enterFolder(QString());
    }
}

void FormFile::menu_file_DeleteCheckItem()
{
    const lumi::BusyScope busy(this);
    const DeletionTexts texts{lumi::MsgDeleteSelected, msg(lumi::MsgDeleteThesePhotos),
                              lumi::MsgPartNotDeleted};
    const bool isConfirmed = deleteIfConfirmed(this, texts, [this] {
        return m_view->deleteChecked();
    });
    if (isConfirmed) {
        showName(currentItem());
    }
}

void FormFile::menu_file_DeleteEmptyFolder()
{
    const lumi::BusyScope busy(this);
    const lumi::Medium medium = mediumOnShow();
    const DeletionTexts texts{lumi::MsgDeleteEmptyFolder, msg(lumi::MsgDeleteThisFolder),
                              lumi::MsgFolderDeletionFailed};
    const bool isConfirmed = deleteIfConfirmed(this, texts, [this, &medium] {
        return medium.isThere() && m_view->deleteEmptyFolders();
    });
    if (isConfirmed) {
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
    const lumi::PasteResult result = lumi::underWait(this, [this] {
        return m_view->paste();
    });
    if (result == lumi::PasteResult::NoRoom) {
        lumi::tellError(this, msg(lumi::MsgFreeSomeMemory));
    } else if (result != lumi::PasteResult::Done) {
        lumi::tellError(this, msg(lumi::MsgPasteFailed));
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
