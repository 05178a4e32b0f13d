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
    const QPointer<FormFile> self(this);
    m_view->dropCursorThumbnail();
    // On the heap: the form may go while the viewer is up.
    const QPointer<FPVPictureScrollView> viewer(new FPVPictureScrollView(this, m_view, item));
    if (viewer) {
        viewer->exec();
    }
    delete viewer;
    if (self) {
        m_view->showPage(-1, m_view->currentIndex(), true);
    }
}
