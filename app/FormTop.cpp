// SPDX-License-Identifier: MIT
#include "app/FormTop.h"

#include "app/common/BusyScope.h"
#include "app/common/FormId.h"
#include "app/common/loadPixmap.h"
#include "app/common/messages.h"
#include "platform/Machine.h"
#include "platform/toolkit/BackgroundWidget.h"
#include "platform/toolkit/QPopupMenu.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "widgets/LeftSide.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"
#include "widgets/commonActions.h"
#include "widgets/focusPainters.h"
#include "widgets/messageBoxes.h"

#include <QHBoxLayout>
#include <QTimer>

namespace {

constexpr QSize kButtonSize(236, 236);

using ClickSlot = void (FormTop::*)();

struct ButtonRow
{
    QPoint position;
    const char *normal = nullptr;
    const char *pressed = nullptr;
    ClickSlot slot = nullptr;
    const char *name = nullptr; ///< for screen readers, and if the pictures are missing
};

// The first one has the focus when the form comes up.
constexpr ButtonRow kButtons[] = {
    {{34, 85}, "top_copy", "top_copy_push", &FormTop::btn_takein_clicked, "Import"},
    {{290, 85}, "top_look", "top_look_push", &FormTop::btn_look_clicked, "View"},
};

struct MenuRow
{
    lumi::MessageId text;
    ClickSlot slot;
};

constexpr MenuRow kMenu[] = {
    {lumi::MsgDeleteCache, &FormTop::menu_option_deleteTempFile},
    {lumi::MsgHelp, &FormTop::menu_option_help},
    {lumi::MsgVersion, &FormTop::menu_option_version},
};

} // namespace

FormTop::FormTop(QWidget *parent, QPEToolBar *toolBar)
    : FormBase(parent, toolBar, lumi::TopForm)
{
    parent->setWindowTitle(msg(lumi::MsgLumiVault));
    buildMenu();
    auto *leftSide = new lumi::LeftSide(this);
    m_leftWidget = leftSide->column();
    m_leftWidget->hideButton(MyLeftWidget::AllButtons);
    auto *area = new BackgroundWidget(this);
    area->setBackgroundPixmap(lumi::loadPixmap("bg_right_top"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(leftSide, 0);
    layout->addWidget(area, 1);
    buildButtons(area);
}

void FormTop::buildMenu()
{
    QPopupMenu *menu = addMenu(msg(lumi::MsgAbout));
    for (const MenuRow &row : kMenu) {
        menu->insertItem(msg(row.text), this, row.slot);
    }
}

void FormTop::buildButtons(QWidget *area)
{
    for (const ButtonRow &row : kButtons) {
        auto *button = new MyImageButton(area, lumi::paintFiveRectangles);
        button->setNormalPixmap(lumi::loadPixmap(row.normal, kButtonSize, QLatin1String(row.name)));
        button->move(row.position);
        button->setAccessibleName(QLatin1String(row.name));
        connect(button, &MyImageButton::clicked, this, row.slot);
        m_buttons.append(button);
    }
}

void FormTop::loadPressedPixmaps()
{
    for (qsizetype i = 0; i < m_buttons.size(); ++i) {
        const ButtonRow &row = kButtons[i];
        m_buttons[i]->setPressedPixmap(
            lumi::loadPixmap(row.pressed, kButtonSize, QLatin1String(row.name)));
    }
    if (previousForm() < 0) {
        reportMissingPictures();
    }
}

void FormTop::reportMissingPictures()
{
    if (Resource::areInstalled()) {
        return;
    }
    const QString folder = Machine::instance().resourceDir();
    qWarning("No pictures in %s", qPrintable(folder));
    const lumi::BusyScope busy(this);
    lumi::tellError(this,
                    QStringLiteral("The pictures of the program were not found in\n%1\n"
                                   "Its buttons show their names instead.\n"
                                   "Please install the program again.")
                        .arg(folder),
                    lumi::BoxLines::Whole);
}

void FormTop::formStarted()
{
    FormBase::formStarted();
    m_buttons.first()->setFocus();
    // Loaded later, so that the form appears sooner: they are needed at the first press.
    QTimer::singleShot(0, this, &FormTop::loadPressedPixmaps);
}

void FormTop::btn_takein_clicked()
{
    menu_disp_takein();
}

void FormTop::btn_look_clicked()
{
    menu_disp_look();
}

void FormTop::menu_disp_takein()
{
    requestForm(lumi::ImportForm, QString());
}

void FormTop::menu_disp_look()
{
    requestForm(lumi::FileForm, QString());
}

void FormTop::menu_option_deleteTempFile()
{
    const lumi::BusyScope busy(this);
    if (!lumi::confirm(this, msg(lumi::MsgDeleteCache), msg(lumi::MsgDeleteCacheQuestion))) {
        return;
    }
    lumi::underWait(mainWindow(), [] {
        if (SwapSystem *swap = swapSystem(); swap != nullptr) {
            swap->Clear();
        }
    });
}

void FormTop::menu_option_help()
{
    const lumi::BusyScope busy(this);
    showHelp(this);
}

void FormTop::menu_option_version()
{
    const lumi::BusyScope busy(this);
    showVersion(this);
}
