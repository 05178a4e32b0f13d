// SPDX-License-Identifier: MIT
// The full view of a photo.
#include "app/common/BusyScope.h"
#include "files/FormFile.h"
#include "items/FPVItemImage.h"
#include "viewer/FPVPictureScrollView.h"
#include "views/FPVThumbnailView.h"

void FormFile::menu_disp_DispAll()
{
    auto *item = qobject_cast<FPVItemImage *>(currentItem());
    if (item == nullptr) {
        return;
    }
    const lumi::BusyScope busy(this);
    m_view->dropCursorThumbnail();
    {
        FPVPictureScrollView viewer(this, m_view, item);
        viewer.exec();
    }
    m_view->showPage(-1, m_view->currentIndex(), true);
}
