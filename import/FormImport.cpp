// SPDX-License-Identifier: MIT
#include "import/FormImport.h"

#include "app/common/BusyScope.h"
#include "app/common/FormId.h"
#include "app/common/diskSpace.h"
#include "app/common/loadPixmap.h"
#include "app/common/messages.h"
#include "app/common/power.h"
#include "import/ImportRun.h"
#include "import/importTexts.h"
#include "platform/Resource.h"
#include "platform/cards/CardSlots.h"
#include "platform/toolkit/BackgroundWidget.h"
#include "platform/toolkit/QPopupMenu.h"
#include "widgets/LeftSide.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"
#include "widgets/commonActions.h"
#include "widgets/messageBoxes.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>

namespace {

constexpr QSize kButtonSize(244, 112);
constexpr int kRefreshMs = 5000;
constexpr int kBatteryPercent = 30;

constexpr QPoint kCfPosition(26, 117);
constexpr QPoint kSdPosition(284, 117);
constexpr QPoint kMemoryPosition(34, 238);
constexpr QPoint kCapacityPosition(32, 286);
constexpr QColor kLabelGround(204, 204, 204);
constexpr QColor kWarning(255, 0, 0);
constexpr QColor kPlain(0, 0, 0);

/// Ids of menu entries that would start an import. Today's menu has no such entries.
constexpr int kCfEntry = 0;
constexpr int kSdEntry = 1;

/// Everything on a card, including hidden folders. Links to files are followed, links to folders
/// are not.
constexpr auto kWholeCard = QDir::Dirs | QDir::Files | QDir::Readable | QDir::Hidden | QDir::System;

void setColour(QWidget *widget, QPalette::ColorRole role, const QColor &colour)
{
    QPalette palette = widget->palette();
    palette.setColor(role, colour);
    widget->setPalette(palette);
}

/// Turns the screen saver off during its lifetime.
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

void FormImport::buildMenu()
{
    m_menu = addMenu(msg(lumi::MsgAbout));
    m_menu->insertItem(msg(lumi::MsgHelp), this, &FormImport::menu_option_help);
    m_menu->insertItem(msg(lumi::MsgVersion), this, &FormImport::menu_option_version);
}

QWidget *FormImport::buildRightSide()
{
    auto *rightSide = new BackgroundWidget(this);
    rightSide->setBackgroundPixmap(lumi::loadPixmap("bg_right_copy"));
    m_cfButton = addCardButton(rightSide, "copy_cf", lumi::MsgCfCard, kCfPosition);
    connect(m_cfButton, &MyImageButton::clicked, this, &FormImport::btn_cf_clicked);
    m_sdButton = addCardButton(rightSide, "copy_sd", lumi::MsgSdCard, kSdPosition);
    connect(m_sdButton, &MyImageButton::clicked, this, &FormImport::btn_sd_clicked);
    m_memoryLabel = addLabel(rightSide, kMemoryPosition);
    m_capacityLabel = addLabel(rightSide, kCapacityPosition);
    return rightSide;
}

MyImageButton *FormImport::addCardButton(QWidget *rightSide, const QByteArray &picture,
                                         lumi::MessageId name, QPoint position)
{
    auto *button = new MyImageButton(rightSide);
    const auto load = [&](const char *state) {
        return lumi::loadPixmap(QByteArray(picture + state), kButtonSize, msg(name));
    };
    button->setNormalPixmap(load(""));
    button->setPressedPixmap(load("_push"));
    button->setDisabledPixmap(load("_gray"));
    button->move(position);
    button->setAccessibleName(msg(name));
    return button;
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
    FormBase::formStarted();
    m_leftWidget->show();
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
    // A cancelled progress dialog closes before the work has stopped, and the buttons are free.
    if (isBusy()) {
        return;
    }
    const lumi::BusyScope busy(this);
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
        tellError(lumi::MsgErrorProcessingStopped);
    }
    m_timer.start(kRefreshMs);
    writeLabels();
    allowClose();
}

void FormImport::tellError(int message)
{
    lumi::tellError(this, msg(message), lumi::BoxLines::Whole);
}

void FormImport::tellStopped()
{
    lumi::tell(this, QMessageBox::Information, msg(lumi::MsgStop), msg(lumi::MsgProcessingStopped),
               lumi::BoxLines::Whole);
}

void FormImport::doImport()
{
    if (!batteryEnough(kBatteryPercent)) {
        tellError(lumi::MsgBatteryLow);
        return;
    }
    {
        const ScreenSaverPause pause;
        if (!searchCard()) {
            return;
        }
    }
    if (!askFolderName()) {
        tellStopped();
    } else if (!m_sourceCard.isThere()) {
        tellError(lumi::MsgAccessErrors);
    } else {
        const ScreenSaverPause pause;
        copyAndReport();
    }
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
    startImport(lumi::CardSlots::mountPoint(Slot::CF));
}

void FormImport::menu_import_sd()
{
    startImport(lumi::CardSlots::mountPoint(Slot::SD));
}

void FormImport::menu_option_help()
{
    // After a Cancel the work goes on for a moment without a dialog over the menu.
    if (isBusy()) {
        return;
    }
    const lumi::BusyScope busy(this);
    showHelp(this);
}

void FormImport::menu_option_version()
{
    if (isBusy()) {
        return;
    }
    const lumi::BusyScope busy(this);
    showVersion(this);
}

void FormImport::menuGrayout()
{
    m_menu->setItemEnabled(kCfEntry, lumi::CardSlots::isPresent(Slot::CF));
    m_menu->setItemEnabled(kSdEntry, lumi::CardSlots::isPresent(Slot::SD));
}

void FormImport::repeatTimer()
{
    writeLabels();
}
