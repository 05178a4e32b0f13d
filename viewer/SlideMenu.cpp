// SPDX-License-Identifier: MIT
#include "viewer/SlideMenu.h"

#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "platform/keys/deviceKey.h"

#include <QKeyEvent>

namespace {

struct Row
{
    int entry;
    int text;
    bool opensGroup;
};

constexpr Row kRows[] = {
    {lumi::SlideMenu::Continue, lumi::MsgContinue, false},
    {lumi::SlideMenu::Details, lumi::MsgDetails, true},
    {lumi::SlideMenu::FullView, lumi::MsgFullView, false},
    {lumi::SlideMenu::Options, lumi::MsgOptions, true},
    {lumi::SlideMenu::Delete, lumi::MsgDelete, true},
    {lumi::SlideMenu::End, lumi::MsgEndSlideshow, true},
};

} // namespace

lumi::SlideMenu::SlideMenu(QWidget *parent)
    : QPopupMenu(parent)
{
    // A press outside the menu closes it and does nothing else.
    setAttribute(Qt::WA_NoMouseReplay);
    for (const Row &row : kRows) {
        if (row.opensGroup) {
            insertSeparator();
        }
        insertItem(msg(row.text), row.entry);
    }
}

void lumi::SlideMenu::keyReleaseEvent(QKeyEvent *event)
{
    switch (deviceKey(event)) {
    case DeviceKey::Menu:
        hide();
        break;
    case DeviceKey::Stop:
        Q_EMIT stopped();
        break;
    default:
        QPopupMenu::keyReleaseEvent(event);
        break;
    }
}
