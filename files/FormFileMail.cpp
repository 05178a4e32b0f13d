// SPDX-License-Identifier: MIT
// The mail key: a small copy of the photo at the cursor goes into the mail folder.
#include "app/common/BusyScope.h"
#include "app/common/messages.h"
#include "files/FormFile.h"
#include "files/mailCopy.h"
#include "items/FPVItemImage.h"
#include "widgets/MyDialogWait.h"

#include <QDate>
#include <QFileInfo>
#include <QMessageBox>

namespace {

void showFailure(QWidget *parent)
{
    QMessageBox::critical(parent, msg(lumi::MsgError), msg(lumi::MsgMailAttachmentFailed));
}

} // namespace

void FormFile::accel_appendToMail()
{
    // The key repeats while the first copy is still being made.
    if (isBusy()) {
        return;
    }
    const QPointer<FPVItemImage> photo(qobject_cast<FPVItemImage *>(currentItem()));
    if (!photo) {
        return;
    }
    const lumi::BusyScope busy(this);
    const QString path = lumi::freeMailPath(QDate::currentDate());
    if (path.isEmpty()) {
        showFailure(this);
        return;
    }
    MyDialogWait wait(mainWindow(), msg(lumi::MsgWorking));
    wait.setWindowTitle(msg(lumi::MsgLumiVault));
    wait.start(0);
    const QImage image = photo ? lumi::mailImage(photo) : QImage();
    if (image.isNull() || !lumi::saveMailImage(image, path)) {
        showFailure(this);
        return;
    }
    QMessageBox::information(this, msg(lumi::MsgAttachToMail),
                             msg(lumi::MsgMailPhotoSaved).arg(QFileInfo(path).fileName()));
}
