// SPDX-License-Identifier: MIT
// The slideshow of the folder on show, and its options.
#include "app/common/BusyScope.h"
#include "app/common/Settings.h"
#include "files/FormFile.h"
#include "files/slideshowOptions.h"
#include "items/FPVItemImage.h"
#include "items/FPVItemList.h"
#include "viewer/DialogSlideshow.h"
#include "viewer/SlideShow.h"
#include "views/FPVThumbnailView.h"
#include "widgets/messageBoxes.h"

#include <algorithm>

using lumi::Settings;

void FormFile::menu_disp_Slideshow_Execution()
{
    const lumi::BusyScope busy(this);
    switch (runSlideshow()) {
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
    // The show may have dropped files.
    const int last = m_rootItem->count() - 1;
    m_view->showPage(-1, std::min(m_view->currentIndex(), last), true);
    showName(currentItem());
}

/// Plays from the cursor on and leaves the cursor where the show ended. Returns its exit code.
int FormFile::runSlideshow()
{
    const lumi::SlideshowOptions options
        = lumi::slideshowOptions({Settings::operation(), Settings::dispOrder(),
                                  Settings::dispTime(), Settings::dispCount()});
    const int cursor = m_view->currentIndex();
    m_view->dropCursorThumbnail();
    auto show = lumi::underWait(this, [&] {
        return std::make_unique<SlideShow>(mainWindow(), m_rootItem.get(), options.autoMode,
                                           options.inOrder, options.delay, options.loopCount,
                                           cursor);
    });
    const int code = show->exec();
    FPVItemObject *last = show->lastItem();
    show.reset();
    if (last != nullptr) {
        m_view->setCurrentObjectQuiet(last);
    }
    return code;
}

void FormFile::menu_disp_Slideshow_Setting()
{
    const lumi::BusyScope busy(this);
    DialogSlideshow(this).exec();
}
