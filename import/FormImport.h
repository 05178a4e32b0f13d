// SPDX-License-Identifier: MIT
// The form that brings the photos of a card into the photo store: a button for each card slot,
// and labels that tell what room there is. A press runs the whole import as one flow of
// dialogs: battery, search, name of the folder, copy, report. The form is the flow and its
// boxes; ImportRun does the file work.
// The flow stays on the stack of the button's signal. While it runs, the process can't be
// closed, requests for another form wait, and a second press does nothing.
// Owns: its widgets, its menu bar in the shared tool bar, and the tree of the last card.
#pragma once

#include "app/common/FormBase.h"
#include "app/common/Medium.h"
#include "files/engine/FPVFileTree.h"
#include "import/ImportKind.h"

#include <QPointer>
#include <QTimer>

class MyImageButton;
class MyLeftWidget;
class QLabel;
class QPEMenuBar;

class FormImport : public FormBase
{
    Q_OBJECT

public:
    FormImport(QWidget *parent, QPEToolBar *toolBar);
    ~FormImport() override;

    void formStarted() override;
    void mtabChanged() override;

    /// Runs an import and returns when its last box is closed. source: root of the card. Does
    /// nothing while one runs.
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
    /// What a search came to.
    enum SearchResult : int { Found = 0, SearchCancelled = 1, NoFile = 2, NoRoom = 3, Failed = 4 };

    void buildMenu();
    [[nodiscard]] QWidget *buildRightSide();
    [[nodiscard]] QLabel *addLabel(QWidget *rightSide, QPoint position);
    void showCards();
    void focusCard();
    void writeLabels();

    void doImport();
    [[nodiscard]] bool searchWithoutScreenSaver();
    void copyWithoutScreenSaver();
    [[nodiscard]] bool cardPresent() const;

    [[nodiscard]] bool searchCard();
    [[nodiscard]] SearchResult runSearch();
    [[nodiscard]] bool askWhetherToCopy(const QString &found, bool fits);

    [[nodiscard]] bool askFolderName();
    /// True unless nothing was copied.
    bool copyAndReport();
    [[nodiscard]] lumi::ImportKind copyFiles();
    void addErrorLine(const QString &path, lumi::ImportKind kind);
    void tellFailure(lumi::ImportKind kind);
    void offerReport();

    QPointer<QPEMenuBar> m_menuBar; // dies with the tool bar, if that goes first
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
    bool m_running = false;
    lumi::Medium m_sourceCard; ///< the one that was in as the run began
};
