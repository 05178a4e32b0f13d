// SPDX-License-Identifier: MIT
// The info panel above the pictures in Info mode, and the editor that its button opens.
#include "app/common/BusyScope.h"
#include "exif/ui/FormExif.h"
#include "exif/ui/MyImageWidget.h"
#include "files/FormFile.h"
#include "items/FPVItemObject.h"
#include "views/FPVPictureView.h"
#include "views/FPVThumbnailView.h"

QWidget *FormFile::buildDetailPanel(QWidget *part)
{
    m_detailPanel = new MyImageWidget(part);
    m_detailPanel->hide();
    connect(m_detailPanel, &MyImageWidget::btn_edit_clicked, this, &FormFile::btn_edit_clicked);
    connect(m_detailPanel->picture(), &FPVPictureView::decided, this, &FormFile::filelist_decided);
    return m_detailPanel;
}

void FormFile::tellPanel(FPVItemObject *item)
{
    // A new photo is read under a wait dialog, which runs events.
    const lumi::BusyScope busy(this);
    m_detailPanel->setItem(item);
}

void FormFile::btn_edit_clicked()
{
    const FPVItemObject *item = currentItem();
    if (item == nullptr) {
        return;
    }
    const lumi::BusyScope busy(this);
    {
        FormExif editor(this, item->path());
        // The editor replaces the photo's file, and the item may be destroyed while it is open.
        m_view->dropCursorThumbnail();
        tellPanel(nullptr);
        static_cast<void>(editor.exec());
    }
    m_view->showPage(-1, m_view->currentIndex(), true);
    tellPanel(currentItem());
}
