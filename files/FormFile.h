// SPDX-License-Identifier: MIT
// The form for browsing and managing photos: one folder of one medium at a time, in one of
// three display modes, with the menus for file work. It contains the layout, the navigation, the
// state of the menus and the reaction to cards, but no file operations.
// The form remembers for each medium the folder that was entered last.
// Owns: its widgets, and the list of the folder on show.
#pragma once

#include "app/common/FormBase.h"
#include "app/common/Medium.h"
#include "platform/Machine.h"

#include <memory>

class FPVItemList;
class FPVItemObject;
class FPVThumbnailView;
class MyImageWidget;
class MyLeftWidget;
class QComboBox;
class QLabel;
class QLayout;
class QPopupMenu;
class QToolButton;

class FormFile : public FormBase
{
    Q_OBJECT

public:
    FormFile(QWidget *parent, QPEToolBar *toolBar);
    ~FormFile() override;

    void formStarted() override;
    void mtabChanged() override;

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void menu_file_NewFolder();
    void menu_file_Rename();
    void menu_file_Delete();
    void menu_file_DeleteCheckItem();
    void menu_file_DeleteEmptyFolder();
    void menu_edit_Cut();
    void menu_edit_Copy();
    void menu_edit_CutCheckItem();
    void menu_edit_CopyCheckItem();
    void menu_edit_Paste();
    void menu_edit_CheckAll();
    void menu_edit_ReleaseCheck();
    void menu_disp_ThumbnailLarge();
    void menu_disp_ThumbnailSmall();
    void menu_disp_DispDetail();
    void menu_disp_Slideshow_Execution();
    void menu_disp_Slideshow_Setting();
    void menu_disp_DispAll();
    void menu_option_Help();
    void menu_option_Version();
    void menu_disp_Top();
    void accel_appendToMail();
    /// @param name of the medium, as in the combo box
    void combo_device_activated(const QString &name);
    /// @param id of a button of the column
    void btn_leftWidget_clicked(int id);
    void btn_edit_clicked();
    void filelist_selected(FPVItemObject *item);
    /// A null item means the folder above.
    void filelist_decided(FPVItemObject *item);
    void menuGrayout();
    /// Goes up one level.
    void btn_root_cliced(); // sic
    // NOLINTEND(readability-identifier-naming)

protected:
    void keyPressEvent(QKeyEvent *event) override;
    /// Sees the events of the whole application.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum Mode : int { NoMode = -1, LargeMode = 0, SmallMode = 1, DetailMode = 2 };

    /// The folder in which a card is opened first.
    [[nodiscard]] static QString cardStartPath(Slot slot);
    /// The card that is in a slot now, or none.
    [[nodiscard]] static lumi::Medium cardIn(Slot slot);
    void buildMenus();
    template <typename Rows> void addEntries(int title, const Rows &rows);
    template <typename Rows> void appendEntries(QPopupMenu *menu, const Rows &rows);
    [[nodiscard]] QWidget *buildRightSide();
    [[nodiscard]] QLayout *buildTopRow(QWidget *rightSide);
    [[nodiscard]] QWidget *buildPicturePart(QWidget *rightSide);
    [[nodiscard]] QWidget *buildDetailPanel(QWidget *part);
    void fillDeviceCombo();
    [[nodiscard]] bool goTo(const QString &path, const QString &root);
    [[nodiscard]] bool goToCard(Slot slot, QString *remembered);
    /// A null path reads the current folder again.
    void enterFolder(const QString &path);
    void setMode(Mode mode);
    [[nodiscard]] int runSlideshow();
    /// Puts the item's name into the status field. Null clears the field.
    void showName(const FPVItemObject *item);
    /// The medium of the current folder.
    [[nodiscard]] lumi::Medium mediumOnShow() const;
    /// Null means no item.
    void tellPanel(FPVItemObject *item);
    [[nodiscard]] FPVItemObject *currentItem() const;

    QLabel *m_statusField = nullptr;
    QComboBox *m_deviceCombo = nullptr;
    QToolButton *m_upButton = nullptr;
    MyImageWidget *m_detailPanel = nullptr;
    MyLeftWidget *m_leftWidget = nullptr;
    FPVThumbnailView *m_view = nullptr;
    std::unique_ptr<FPVItemList> m_rootItem; ///< null until the form is started
    QString *m_currentPath = nullptr;
    QString m_photoFilesPath;
    QString m_cfPath;
    QString m_sdPath;
    Mode m_mode = NoMode;
    QList<QPopupMenu *> m_menus;
    lumi::Medium m_cfCard; ///< as of the last card change
    lumi::Medium m_sdCard;
};
