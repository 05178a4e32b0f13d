// SPDX-License-Identifier: MIT
// The mail key: a small copy of the photo at the cursor goes into the mail folder.
#include "app/common/BusyScope.h"
#include "app/common/messages.h"
#include "files/FormFile.h"
#include "files/fileBoxes.h"
#include "files/mailCopy.h"
#include "items/FPVItemImage.h"

#include <QDate>
#include <QFileInfo>

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
        lumi::showError(this, msg(lumi::MsgMailAttachmentFailed));
        return;
    }
    const QPointer<FormFile> alive(this);
    const bool isSaved = lumi::underWait(this, [&photo, &path] {
        const QImage image = photo ? lumi::mailImage(photo) : QImage();
        return !image.isNull() && lumi::saveMailImage(image, path);
    });
    if (!alive) {
        return;
    }
    if (isSaved) {
        lumi::showInformation(this, msg(lumi::MsgAttachToMail),
                              msg(lumi::MsgMailPhotoSaved).arg(QFileInfo(path).fileName()));
    } else {
        lumi::showError(this, msg(lumi::MsgMailAttachmentFailed));
    }
}
