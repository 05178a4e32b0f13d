// SPDX-License-Identifier: MIT
// The form that imports the photos of a card into the photo store: a button for each card slot, and
// labels with the free space. A press runs the whole import as a sequence of dialogs: battery,
// search, name of the folder, copy, report. The form contains the sequence and its boxes; ImportRun
// does the file work.
// The slot of the button returns at the end of the import. Until then the window can't be closed,
// requests for another form wait, and a second press does nothing.
// Owns: its widgets, and the tree of the last card.
#pragma once

#include "app/common/FormBase.h"
#include "app/common/Medium.h"
#include "app/common/messageIds.h"
#include "files/engine/FPVFileTree.h"
#include "import/ImportKind.h"

#include <QTimer>

class MyImageButton;
class MyLeftWidget;
class QLabel;
class QPopupMenu;

class FormImport : public FormBase
{
    Q_OBJECT

public:
    FormImport(QWidget *parent, QPEToolBar *toolBar);

    void formStarted() override;
    void mtabChanged() override;

    /// Runs an import and returns when its last box is closed. Does nothing while an import runs.
    /// @param source root of the card
    void startImport(const QString &source);

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void btn_leftWidget_clicked(int id);
    void btn_cf_clicked();
    void btn_sd_clicked();
    void btn_main_clicked();
    void menu_disp_Top();
    void menu_import_cf();
    void menu_import_sd();
    void menu_option_help();
    void menu_option_version();
    void menuGrayout();
    void searchCancel();
    void copyCancel();
    void repeatTimer();
    // NOLINTEND(readability-identifier-naming)

private:
    /// How a search ended.
    enum SearchResult { Found, SearchCancelled, NoFile, NoRoom };

    void buildMenu();
    [[nodiscard]] QWidget *buildRightSide();
    [[nodiscard]] MyImageButton *addCardButton(QWidget *rightSide, const QByteArray &picture,
                                               lumi::MessageId name, QPoint position);
    [[nodiscard]] QLabel *addLabel(QWidget *rightSide, QPoint position);
    void showCards();
    void focusCard();
    void writeLabels();

    void doImport();

    [[nodiscard]] bool searchCard();
    [[nodiscard]] SearchResult runSearch();
    [[nodiscard]] bool askWhetherToCopy(const QString &found, bool fits);

    [[nodiscard]] bool askFolderName();
    void copyAndReport();
    [[nodiscard]] lumi::ImportKind copyFiles();
    void tellFailure(lumi::ImportKind kind);
    void offerReport();
    void tellError(int message);
    /// Says that the user has ended the run.
    void tellStopped();

    QPopupMenu *m_menu = nullptr;
    MyLeftWidget *m_leftWidget = nullptr;
    MyImageButton *m_cfButton = nullptr;
    MyImageButton *m_sdButton = nullptr;
    QTimer m_timer{this};
    QLabel *m_memoryLabel = nullptr;
    QLabel *m_capacityLabel = nullptr;
    FPVFileTree m_fileTree;
    QString m_sourcePath;
    QString m_folderName;
    int m_copiedCount = 0;
    QString m_errorReport;
    lumi::Medium m_sourceCard; ///< the card at the start of the import
};
