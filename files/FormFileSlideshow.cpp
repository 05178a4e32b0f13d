// SPDX-License-Identifier: MIT
// The slideshow of the folder on show, and its options.
#include "app/common/BusyScope.h"
#include "app/common/Settings.h"
#include "files/FormFile.h"
#include "files/fileBoxes.h"
#include "files/slideshowOptions.h"
#include "items/FPVItemImage.h"
#include "items/FPVItemList.h"
#include "viewer/DialogSlideshow.h"
#include "viewer/SlideShow.h"
#include "views/FPVThumbnailView.h"

#include <algorithm>

using lumi::Settings;

void FormFile::menu_disp_Slideshow_Execution()
{
    if (m_rootItem == nullptr) {
        return;
    }
    const lumi::BusyScope busy(this);
    const QPointer<FormFile> self(this);
    const int code = runSlideshow();
    if (!self) {
        return;
    }
    switch (code) {
    case SlideShow::ToDetails:
        menu_disp_DispDetail();
        break;
    case SlideShow::ToFullView:
        if (qobject_cast<FPVItemImage *>(currentItem()) != nullptr) {
            menu_disp_DispAll(); // refreshes the page itself
            return;
        }
        break; // its picture was deleted
    case SlideShow::ToOptions:
        menu_disp_Slideshow_Setting();
        break;
    default:
        break;
    }
    if (self) {
        // The show may have dropped files.
        const int last = m_rootItem->count() - 1;
        m_view->showPage(-1, std::min(m_view->currentIndex(), last), true);
        showName(currentItem());
    }
}

/// Plays from the cursor on and leaves the cursor where the show ended. Its exit code; the form
/// may be gone then.
int FormFile::runSlideshow()
{
    const lumi::SlideshowOptions options
        = lumi::slideshowOptions({Settings::operation(), Settings::dispOrder(),
                                  Settings::dispTime(), Settings::dispCount()});
    const int cursor = m_view->currentIndex();
    m_view->dropCursorThumbnail();
    const QPointer<FormFile> self(this);
    // On the heap: the form may go while it is up.
    const QPointer<SlideShow> show(lumi::underWait(this, [&] {
        return new SlideShow(mainWindow(), m_rootItem.get(), options.autoMode, options.inOrder,
                             options.delay, options.loopCount, cursor);
    }));
    if (show) {
        show->exec();
    }
    if (!self || !show) {
        return SlideShow::ToBrowser;
    }
    const int code = show->exitCode();
    FPVItemObject *last = show->lastItem();
    delete show;
    if (last != nullptr) {
        m_view->setCurrentObjectQuiet(last);
    }
    return code;
}

void FormFile::menu_disp_Slideshow_Setting()
{
    const lumi::BusyScope busy(this);
    const QPointer<DialogSlideshow> dialog(new DialogSlideshow(this));
    dialog->exec();
    delete dialog;
}
