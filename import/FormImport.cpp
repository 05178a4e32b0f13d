// SPDX-License-Identifier: MIT
#include "import/FormImport.h"

#include "app/common/BusyScope.h"
#include "app/common/FormId.h"
#include "app/common/diskSpace.h"
#include "app/common/loadPixmap.h"
#include "app/common/messages.h"
#include "app/common/power.h"
#include "import/ImportRun.h"
#include "import/importBoxes.h"
#include "import/importTexts.h"
#include "platform/Resource.h"
#include "platform/cards/CardSlots.h"
#include "platform/toolkit/BackgroundWidget.h"
#include "platform/toolkit/QPopupMenu.h"
#include "platform/windows/QPEMenuBar.h"
#include "widgets/LeftSide.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"
#include "widgets/commonActions.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>

namespace {

constexpr int kRefreshMs = 5000;
constexpr int kBatteryPercent = 30;

constexpr QPoint kCfPosition(26, 117);
constexpr QPoint kSdPosition(284, 117);
constexpr QPoint kMemoryPosition(34, 238);
constexpr QPoint kCapacityPosition(32, 286);
constexpr QColor kLabelGround(204, 204, 204);
constexpr QColor kWarning(255, 0, 0);
constexpr QColor kPlain(0, 0, 0);

/// Ids of entries that would start an import; the menus have none of them.
constexpr int kCfEntry = 0;
constexpr int kSdEntry = 1;

/// All of a card, hidden folders too. A link to a file is read as what it points to; one to a
/// folder is looked at and not followed.
constexpr auto kWholeCard = QDir::Dirs | QDir::Files | QDir::Readable | QDir::Hidden | QDir::System;

void setColour(QWidget *widget, QPalette::ColorRole role, const QColor &colour)
{
    QPalette palette = widget->palette();
    palette.setColor(role, colour);
    widget->setPalette(palette);
}

/// Keeps the screen saver away while it lives.
class ScreenSaverPause
{
public:
    ScreenSaverPause() { setScreenSaver(0); }

    ~ScreenSaverPause() { setScreenSaver(1); }

    Q_DISABLE_COPY_MOVE(ScreenSaverPause)
};

} // namespace

FormImport::FormImport(QWidget *parent, QPEToolBar *toolBar)
    : FormBase(parent, toolBar, lumi::ImportForm)
{
    parent->setWindowTitle(msg(lumi::MsgLumiVault));
    buildMenu();
    auto *leftSide = new lumi::LeftSide(this);
    m_leftWidget = leftSide->column();
    m_leftWidget->hideButton(MyLeftWidget::AllButtons);
    m_leftWidget->showButton(MyLeftWidget::Top);
    connect(m_leftWidget, &MyLeftWidget::btn_clicked, this, &FormImport::btn_leftWidget_clicked);
    QWidget *rightSide = buildRightSide();
    writeLabels();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(leftSide, 0);
    row->addWidget(rightSide, 1);
    showCards();
    focusCard();
    connect(&m_timer, &QTimer::timeout, this, &FormImport::repeatTimer);
    m_timer.start(kRefreshMs);
}

FormImport::~FormImport()
{
    if (m_menuBar) {
        m_menuBar->hide();
        delete m_menuBar;
    }
}

void FormImport::buildMenu()
{
    m_menuBar = new QPEMenuBar(toolBar());
    m_menuBar->hide();
    auto *menu = new QPopupMenu(m_menuBar);
    menu->setTitle(msg(lumi::MsgAbout));
    menu->insertItem(msg(lumi::MsgHelp), this, &FormImport::menu_option_help);
    menu->insertItem(msg(lumi::MsgVersion), this, &FormImport::menu_option_version);
    m_menuBar->addMenu(menu);
}

QWidget *FormImport::buildRightSide()
{
    auto *rightSide = new BackgroundWidget(this);
    rightSide->setBackgroundPixmap(lumi::loadPixmap("bg_right_copy"));
    m_cfButton = new MyImageButton(rightSide);
    m_cfButton->setNormalPixmap(lumi::loadPixmap("copy_cf"));
    m_cfButton->setPressedPixmap(lumi::loadPixmap("copy_cf_push"));
    m_cfButton->setDisabledPixmap(lumi::loadPixmap("copy_cf_gray"));
    m_cfButton->move(kCfPosition);
    connect(m_cfButton, &MyImageButton::clicked, this, &FormImport::btn_cf_clicked);
    m_sdButton = new MyImageButton(rightSide);
    m_sdButton->setNormalPixmap(lumi::loadPixmap("copy_sd"));
    m_sdButton->setPressedPixmap(lumi::loadPixmap("copy_sd_push"));
    m_sdButton->setDisabledPixmap(lumi::loadPixmap("copy_sd_gray"));
    m_sdButton->move(kSdPosition);
    connect(m_sdButton, &MyImageButton::clicked, this, &FormImport::btn_sd_clicked);
    m_memoryLabel = addLabel(rightSide, kMemoryPosition);
    m_capacityLabel = addLabel(rightSide, kCapacityPosition);
    return rightSide;
}

QLabel *FormImport::addLabel(QWidget *rightSide, QPoint position)
{
    auto *label = new QLabel(rightSide);
    label->setTextFormat(Qt::PlainText);
    label->setAutoFillBackground(true);
    setColour(label, QPalette::Window, kLabelGround);
    label->move(position);
    return label;
}

void FormImport::formStarted()
{
    if (m_menuBar) {
        m_menuBar->show();
    }
    m_leftWidget->show();
    show();
    focusCard();
}

void FormImport::mtabChanged()
{
    showCards();
}

void FormImport::showCards()
{
    m_cfButton->setEnabled(lumi::CardSlots::isPresent(Slot::CF));
    m_sdButton->setEnabled(lumi::CardSlots::isPresent(Slot::SD));
}

void FormImport::focusCard()
{
    if (m_sdButton->isEnabled()) {
        m_sdButton->setFocus();
    } else if (m_cfButton->isEnabled()) {
        m_cfButton->setFocus();
    }
}

void FormImport::writeLabels()
{
    const int freeKB = lumi::freeDocumentsKB();
    m_memoryLabel->setText(lumi::memoryText(freeKB));
    setColour(m_memoryLabel, QPalette::WindowText, lumi::isMemoryLow(freeKB) ? kWarning : kPlain);
    m_memoryLabel->adjustSize();
    m_capacityLabel->setText(lumi::capacityText(freeKB));
    m_capacityLabel->adjustSize();
}

void FormImport::startImport(const QString &source)
{
    // A cancelled progress dialog is gone before the work has stopped, and the buttons are free.
    if (m_running) {
        return;
    }
    const lumi::BusyScope busy(this);
    m_running = true;
    forbidClose();
    m_fileTree.clear();
    m_folderName = QString();
    m_copiedCount = 0;
    m_errorReport.clear();
    FPVFileTree::setDirFilter(static_cast<int>(kWholeCard));
    m_timer.stop();
    m_sourcePath = source;
    m_sourceCard = lumi::Medium(source);
    try {
        doImport();
    } catch (...) {
        lumi::tellBox(this, QMessageBox::Critical, msg(lumi::MsgError),
                      msg(lumi::MsgErrorProcessingStopped));
    }
    m_timer.start(kRefreshMs);
    writeLabels();
    allowClose();
    m_running = false;
}

void FormImport::doImport()
{
    if (!batteryEnough(kBatteryPercent)) {
        lumi::tellBox(this, QMessageBox::Critical, msg(lumi::MsgError), msg(lumi::MsgBatteryLow));
        return;
    }
    if (!searchWithoutScreenSaver()) {
        return;
    }
    if (!askFolderName()) {
        lumi::tellBox(this, QMessageBox::Information, msg(lumi::MsgStop),
                      msg(lumi::MsgProcessingStopped));
        return;
    }
    if (!cardPresent()) {
        lumi::tellBox(this, QMessageBox::Critical, msg(lumi::MsgError), msg(lumi::MsgAccessErrors));
        return;
    }
    copyWithoutScreenSaver();
}

bool FormImport::searchWithoutScreenSaver()
{
    const ScreenSaverPause pause;
    return searchCard();
}

void FormImport::copyWithoutScreenSaver()
{
    const ScreenSaverPause pause;
    copyAndReport();
}

bool FormImport::cardPresent() const
{
    return m_sourceCard.isThere();
}

void FormImport::btn_leftWidget_clicked(int id)
{
    if (id == MyLeftWidget::Top) {
        menu_disp_Top();
    }
}

void FormImport::btn_cf_clicked()
{
    menu_import_cf();
}

void FormImport::btn_sd_clicked()
{
    menu_import_sd();
}

void FormImport::btn_main_clicked() { }

void FormImport::menu_disp_Top()
{
    requestForm(lumi::TopForm, QString());
}

void FormImport::menu_import_cf()
{
    startImport(Machine::instance().configuredMountPoint(Slot::CF));
}

void FormImport::menu_import_sd()
{
    startImport(Machine::instance().configuredMountPoint(Slot::SD));
}

void FormImport::menu_option_help()
{
    // The import's own dialogs stand over the menu, but for the one that was just cancelled.
    if (m_running) {
        return;
    }
    const lumi::BusyScope busy(this);
    showHelp(this);
}

void FormImport::menu_option_version()
{
    if (m_running) {
        return;
    }
    const lumi::BusyScope busy(this);
    showVersion(this);
}

void FormImport::menuGrayout()
{
    if (!m_menuBar) {
        return;
    }
    const auto menus = m_menuBar->findChildren<QPopupMenu *>();
    for (QPopupMenu *menu : menus) {
        menu->setItemEnabled(kCfEntry, lumi::CardSlots::isPresent(Slot::CF));
        menu->setItemEnabled(kSdEntry, lumi::CardSlots::isPresent(Slot::SD));
    }
}

void FormImport::repeatTimer()
{
    writeLabels();
}
