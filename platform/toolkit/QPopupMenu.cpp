// SPDX-License-Identifier: MIT
#include "platform/toolkit/QPopupMenu.h"

#include <QStyleOptionMenuItem>

#include <algorithm>

namespace {

constexpr const char *kShownKey = "shownKey";

QString shownKey(const QAction *action)
{
    return action->property(kShownKey).toString();
}

// -1 is not used: as an argument it means "any number", as a result "none".
int freshId()
{
    static int next = -2;
    return next--;
}

QAction *findAction(const QMenu *menu, int id)
{
    const QList<QAction *> actions = menu->actions();
    for (QAction *action : actions) {
        if (action->data().isValid() && action->data().toInt() == id) {
            return action;
        }
        if (action->menu() == nullptr) {
            continue;
        }
        if (QAction *found = findAction(action->menu(), id)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

QPopupMenu::QPopupMenu(QWidget *parent)
    : QMenu(parent)
{
    setSeparatorsCollapsible(false);
}

int QPopupMenu::insertItem(const QString &text, int id)
{
    return identify(addAction(text), 0, id);
}

int QPopupMenu::insertItem(const QString &text, QPopupMenu *popup, int id)
{
    QAction *action = addMenu(popup);
    action->setText(text);
    return identify(action, 0, id);
}

void QPopupMenu::setItemEnabled(int id, bool enable)
{
    if (QAction *action = findItem(id)) {
        action->setEnabled(enable);
    }
}

void QPopupMenu::setItemChecked(int id, bool check)
{
    if (QAction *action = findItem(id)) {
        action->setCheckable(true);
        action->setChecked(check);
    }
}

void QPopupMenu::setItemVisible(int id, bool visible)
{
    if (QAction *action = findItem(id)) {
        action->setVisible(visible);
    }
}

void QPopupMenu::showKey(QAction *action, const char *key)
{
    action->setProperty(kShownKey, QLatin1String(key));
}

/// A style draws what follows the tab in a second column, as it does with shortcuts.
void QPopupMenu::initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const
{
    QMenu::initStyleOption(option, action);
    if (const QString key = shownKey(action); !key.isEmpty()) {
        option->text += QLatin1Char('\t') + key;
    }
    const QList<QAction *> all = actions();
    for (const QAction *other : all) {
        option->reservedShortcutWidth = std::max(
            option->reservedShortcutWidth, option->fontMetrics.horizontalAdvance(shownKey(other)));
    }
}

QAction *QPopupMenu::findItem(int id) const
{
    return findAction(this, id);
}

int QPopupMenu::exec(const QPoint &position)
{
    const QAction *chosen = QMenu::exec(position);
    return chosen != nullptr && chosen->data().isValid() ? chosen->data().toInt() : -1;
}

int QPopupMenu::identify(QAction *action, int accel, int id)
{
    if (accel != 0) {
        action->setShortcut(QKeySequence(accel));
    }
    const int given = id == -1 ? freshId() : id;
    action->setData(given);
    return given;
}
