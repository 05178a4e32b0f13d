// SPDX-License-Identifier: MIT
#include "viewer/DialogSlideshow.h"

#include "app/common/Settings.h"
#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "platform/screen/panel.h"
#include "platform/windows/dialogButtons.h"
#include "widgets/messageBoxes.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>

#include <algorithm>

using lumi::Settings;

namespace {

constexpr int kAutoRow = 0;

} // namespace

/// One line of the dialog: label, list, texts of the rows, setting.
struct DialogSlideshow::Choice
{
    QComboBox *DialogSlideshow::*combo;
    const char *name;
    int label;
    int firstRow;
    int lastRow;
    int (*stored)();
    void (*store)(int row);

    /// In the order of the dialog, in which they are stored too.
    static const Choice kAll[];
};

const DialogSlideshow::Choice DialogSlideshow::Choice::kAll[] = {
    {&DialogSlideshow::m_comboOperation, "comboOperation", lumi::MsgTransition, lumi::MsgAuto,
     lumi::MsgManual, Settings::operation, Settings::setOperation},
    {&DialogSlideshow::m_comboOrder, "comboOrder", lumi::MsgOrder, lumi::MsgDefault,
     lumi::MsgRandom, Settings::dispOrder, Settings::setDispOrder},
    {&DialogSlideshow::m_comboDelay, "comboDelay", lumi::MsgDelay, lumi::MsgDelay2Secs,
     lumi::MsgDelay10Secs, Settings::dispTime, Settings::setDispTime},
    {&DialogSlideshow::m_comboLoop, "comboLoop", lumi::MsgLoopCount, lumi::MsgLoop1x,
     lumi::MsgLoopForever, Settings::dispCount, Settings::setDispCount},
};

DialogSlideshow::DialogSlideshow(QWidget *parent, const char *name)
    : QDialog(parent)
{
    setObjectName(QLatin1String(name));
    setWindowTitle(msg(lumi::MsgSlideshowOptions));
    setModal(true);
    auto *grid = new QGridLayout(this);
    int line = 0;
    for (const Choice &choice : Choice::kAll) {
        addChoice(choice, grid, line++);
    }
    connect(m_comboOperation, &QComboBox::activated, this,
            &DialogSlideshow::combo_operation_activated);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(line++, 1);
    grid->addWidget(lumi::makeAcceptRow(this), line, 0, 1, 2);
    combo_operation_activated(m_comboOperation->currentIndex());
    showMaximized();
}

void DialogSlideshow::addChoice(const Choice &choice, QGridLayout *grid, int line)
{
    auto *label = new QLabel(msg(choice.label), this);
    auto *combo = new QComboBox(this);
    combo->setObjectName(QLatin1String(choice.name));
    combo->setMinimumHeight(lumi::kFingerSize);
    for (int row = choice.firstRow; row <= choice.lastRow; ++row) {
        combo->addItem(msg(row));
    }
    // The settings file may have been edited by hand.
    combo->setCurrentIndex(std::clamp(choice.stored(), 0, combo->count() - 1));
    connect(combo, &QComboBox::activated, this, &DialogSlideshow::combo_activated);
    label->setBuddy(combo);
    grid->addWidget(label, line, 0);
    grid->addWidget(combo, line, 1);
    this->*choice.combo = combo;
}

void DialogSlideshow::combo_operation_activated(int row)
{
    for (QComboBox *combo : {m_comboOrder, m_comboDelay, m_comboLoop}) {
        combo->setEnabled(row == kAutoRow);
    }
}

void DialogSlideshow::combo_activated(int /*row*/)
{
    m_changed = true;
}

void DialogSlideshow::accept()
{
    for (const Choice &choice : Choice::kAll) {
        choice.store((this->*choice.combo)->currentIndex());
    }
    QDialog::accept();
}

void DialogSlideshow::reject()
{
    if (m_changed
        && !lumi::confirmDiscard(this, msg(lumi::MsgEditCancelled),
                                 msg(lumi::MsgCancelWithoutSaving))) {
        return;
    }
    QDialog::reject();
}
