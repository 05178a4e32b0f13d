// SPDX-License-Identifier: MIT
// The mail key: a small copy of the photo at the cursor goes into the mail folder.
#include "app/common/BusyScope.h"
#include "app/common/messages.h"
#include "files/FormFile.h"
#include "files/mailCopy.h"
#include "items/FPVItemImage.h"
#include "widgets/messageBoxes.h"

#include <QDate>
#include <QFileInfo>
#include <QPointer>

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
        lumi::tellError(this, msg(lumi::MsgMailAttachmentFailed));
        return;
    }
    const bool isSaved = lumi::underWait(this, [&photo, &path] {
        const QImage image = photo ? lumi::mailImage(photo) : QImage();
        return !image.isNull() && lumi::saveMailImage(image, path);
    });
    if (isSaved) {
        lumi::tell(this, QMessageBox::Information, msg(lumi::MsgAttachToMail),
                   msg(lumi::MsgMailPhotoSaved).arg(QFileInfo(path).fileName()));
    } else {
        lumi::tellError(this, msg(lumi::MsgMailAttachmentFailed));
    }
}
