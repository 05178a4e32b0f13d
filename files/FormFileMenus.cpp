// SPDX-License-Identifier: MIT
// The menus as tables, and when their entries are enabled.
#include "app/common/BusyScope.h"
#include "app/common/messages.h"
#include "files/FormFile.h"
#include "items/FPVItemObject.h"
#include "platform/toolkit/QPopupMenu.h"
#include "views/FPVThumbnailView.h"
#include "widgets/commonActions.h"

#include <algorithm>
#include <utility>

namespace {

enum EntryId : int {
    NewFolderEntry = 0,
    RenameEntry = 1,
    DeleteEntry = 2,
    DeleteCheckedEntry = 3,
    DeleteEmptyEntry = 4,
    CopyEntry = 5,
    CutEntry = 6,
    CopyCheckedEntry = 7,
    CutCheckedEntry = 8,
    PasteEntry = 9,
    CheckAllEntry = 10,
    ReleaseCheckEntry = 11,
    LargeEntry = 13,
    SmallEntry = 14,
    DetailEntry = 15,
    SlideshowEntry = 16,
    RunEntry = 17,
    OptionsEntry = 18,
    FullViewEntry = 19,
    AnyId = -1,
    Separator = -2,
};

struct EntryRow
{
    int id = AnyId;
    lumi::MessageId text = lumi::MsgLumiVault;
    void (FormFile::*slot)() = nullptr; ///< null for separators and the submenu
    const char *key = nullptr;          ///< shown beside the text; see fileKeys.h
};

constexpr EntryRow kFileMenu[] = {
    {NewFolderEntry, lumi::MsgNewFolder, &FormFile::menu_file_NewFolder},
    {RenameEntry, lumi::MsgChangeName, &FormFile::menu_file_Rename},
    {Separator},
    {DeleteEntry, lumi::MsgDelete, &FormFile::menu_file_Delete, "Del"},
    {DeleteCheckedEntry, lumi::MsgDeleteSelected, &FormFile::menu_file_DeleteCheckItem},
    {DeleteEmptyEntry, lumi::MsgDeleteEmptyFolder, &FormFile::menu_file_DeleteEmptyFolder},
};
constexpr EntryRow kEditMenu[] = {
    {CutEntry, lumi::MsgCut, &FormFile::menu_edit_Cut, "Ctrl+X"},
    {CopyEntry, lumi::MsgCopy, &FormFile::menu_edit_Copy, "Ctrl+C"},
    {CutCheckedEntry, lumi::MsgCutSelected, &FormFile::menu_edit_CutCheckItem},
    {CopyCheckedEntry, lumi::MsgCopySelected, &FormFile::menu_edit_CopyCheckItem},
    {PasteEntry, lumi::MsgPaste, &FormFile::menu_edit_Paste, "Ctrl+V"},
    {Separator},
    {CheckAllEntry, lumi::MsgSelectAll, &FormFile::menu_edit_CheckAll},
    {ReleaseCheckEntry, lumi::MsgDeselectAll, &FormFile::menu_edit_ReleaseCheck},
};
constexpr EntryRow kViewMenu[] = {
    {Separator},
    {LargeEntry, lumi::MsgLargeView, &FormFile::menu_disp_ThumbnailLarge},
    {SmallEntry, lumi::MsgSmallView, &FormFile::menu_disp_ThumbnailSmall},
    {DetailEntry, lumi::MsgInfoView, &FormFile::menu_disp_DispDetail},
    {SlideshowEntry, lumi::MsgSlideshow},
    {FullViewEntry, lumi::MsgFullViewMenu, &FormFile::menu_disp_DispAll, "Return"},
};
constexpr EntryRow kSlideshowMenu[] = {
    {RunEntry, lumi::MsgRun, &FormFile::menu_disp_Slideshow_Execution},
    {OptionsEntry, lumi::MsgOptions, &FormFile::menu_disp_Slideshow_Setting},
};
constexpr EntryRow kAboutMenu[] = {
    {AnyId, lumi::MsgHelp, &FormFile::menu_option_Help},
    {AnyId, lumi::MsgVersion, &FormFile::menu_option_Version},
};

/// Entries that are not always enabled, and what they need.
enum Need { Item, Photo, Checked, Checks, Clip, NeedCount };

struct NeedRow
{
    int id = AnyId;
    Need need = NeedCount;
};

constexpr NeedRow kNeeds[] = {
    {RenameEntry, Item},
    {DeleteEntry, Photo},
    {CopyEntry, Item},
    {CutEntry, Photo},
    {DeleteCheckedEntry, Checked},
    {CopyCheckedEntry, Checked},
    {CutCheckedEntry, Checked},
    {ReleaseCheckEntry, Checked},
    {CheckAllEntry, Checks},
    {FullViewEntry, Photo},
    {PasteEntry, Clip},
};

} // namespace

template <typename Rows> void FormFile::appendEntries(QPopupMenu *menu, const Rows &rows)
{
    for (const EntryRow &row : rows) {
        if (row.id == Separator) {
            menu->insertSeparator();
        } else if (row.slot != nullptr) {
            menu->insertItem(msg(row.text), this, row.slot, 0, row.id);
            QPopupMenu::showKey(menu->actions().last(), row.key);
        } else {
            auto *submenu = new QPopupMenu(menu);
            appendEntries(submenu, kSlideshowMenu);
            menu->insertItem(msg(row.text), submenu, row.id);
        }
    }
}

template <typename Rows> void FormFile::addEntries(int title, const Rows &rows)
{
    QPopupMenu *menu = addMenu(msg(title));
    appendEntries(menu, rows);
    connect(menu, &QPopupMenu::aboutToShow, this, &FormFile::menuGrayout);
    m_menus.append(menu);
}

void FormFile::buildMenus()
{
    addEntries(lumi::MsgFile, kFileMenu);
    addEntries(lumi::MsgEdit, kEditMenu);
    addEntries(lumi::MsgView, kViewMenu);
    addEntries(lumi::MsgAbout, kAboutMenu);
}

void FormFile::menuGrayout()
{
    const FPVItemObject *item = currentItem();
    const bool hasItem = item != nullptr && !m_view->currentIsParentEntry();
    std::array<bool, NeedCount> has{};
    has[Item] = hasItem;
    has[Photo] = hasItem && item->isPicture();
    has[Checks] = m_mode != DetailMode;
    has[Checked] = has[Checks] && m_view->anyChecked();
    has[Clip] = !m_view->clipboardPaths().isEmpty();
    for (QPopupMenu *menu : std::as_const(m_menus)) {
        for (const NeedRow &row : kNeeds) {
            menu->setItemEnabled(row.id, has.at(row.need));
        }
        menu->setItemChecked(LargeEntry, m_mode == LargeMode);
        menu->setItemChecked(SmallEntry, m_mode == SmallMode);
        menu->setItemChecked(DetailEntry, m_mode == DetailMode);
    }
}

void FormFile::menu_option_Help()
{
    const lumi::BusyScope busy(this);
    showHelp(this);
}

void FormFile::menu_option_Version()
{
    const lumi::BusyScope busy(this);
    showVersion(this);
}
