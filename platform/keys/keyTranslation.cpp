// SPDX-License-Identifier: MIT
#include "platform/keys/keyTranslation.h"

#include "platform/Machine.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QShortcut>
#include <QWidget>

namespace {

/// Whether the shortcut is active while the receiver has the focus.
bool isInForce(const QShortcut *shortcut, const QWidget *receiver)
{
    const auto *owner = qobject_cast<const QWidget *>(shortcut->parent());
    if (owner == nullptr || !shortcut->isEnabled() || !owner->isEnabled() || !owner->isVisible()) {
        return false;
    }
    switch (shortcut->context()) {
    case Qt::WidgetShortcut:
        return owner == receiver;
    case Qt::WidgetWithChildrenShortcut:
        return owner == receiver || owner->isAncestorOf(receiver);
    default:
        return true;
    }
}

} // namespace

int lumi::translatedKey(const QWidget *receiver, const QKeyEvent *event)
{
    return receiver->testAttribute(Qt::WA_InputMethodEnabled)
        ? 0
        : Machine::instance().deviceKey(event->key(), event->modifiers());
}

bool lumi::activateShortcut(const QWidget *receiver, int key)
{
    const QKeySequence sequence(key);
    const QList<QShortcut *> shortcuts = receiver->window()->findChildren<QShortcut *>();
    for (QShortcut *shortcut : shortcuts) {
        if (shortcut->key() == sequence && isInForce(shortcut, receiver)) {
            QShortcutEvent event(sequence, 0);
            return QCoreApplication::sendEvent(shortcut, &event);
        }
    }
    return false;
}
