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
    const char *key; ///< of the running show, shown beside the text
};

constexpr Row kRows[] = {
    {lumi::SlideMenu::Continue, lumi::MsgContinue, false, nullptr},
    {lumi::SlideMenu::Details, lumi::MsgDetails, true, nullptr},
    {lumi::SlideMenu::FullView, lumi::MsgFullView, false, nullptr},
    {lumi::SlideMenu::Options, lumi::MsgOptions, true, nullptr},
    {lumi::SlideMenu::Delete, lumi::MsgDelete, true, "Del"},
    {lumi::SlideMenu::End, lumi::MsgEndSlideshow, true, nullptr},
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
        showKey(actions().last(), row.key);
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
