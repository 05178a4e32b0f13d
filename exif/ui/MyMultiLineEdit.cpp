// SPDX-License-Identifier: MIT
#include "exif/ui/MyMultiLineEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr char16_t kLastControlCode = 31;

bool isControl(const QKeyEvent *event, int key)
{
    return event->key() == key && event->modifiers().testFlag(Qt::ControlModifier);
}

/// Whether the key inserts text, unlike Escape or Ctrl+A.
bool isTyping(const QKeyEvent *event)
{
    if (event->text().isEmpty() || event->key() == Qt::Key_Delete
        || event->key() == Qt::Key_Backspace) {
        return false;
    }
    const char16_t code = event->text().front().unicode();
    return code == 0 || code > kLastControlCode;
}

} // namespace

MyMultiLineEdit::MyMultiLineEdit(QWidget *parent)
    : QMultiLineEdit(parent)
{ }

QString MyMultiLineEdit::filterText(const QString &text) const
{
    return lumi::filterCharacters(text, m_charMask);
}

QString MyMultiLineEdit::permitted(const QString &text) const
{
    QString kept = filterText(text);
    kept.erase(std::remove_if(kept.begin(), kept.end(),
                              [](QChar character) {
                                  return character.category() == QChar::Other_Control;
                              }),
               kept.end());
    return kept;
}

void MyMultiLineEdit::pasteText(const QString &text)
{
    QString filtered = filterText(text);
    if (!m_pasting) {
        const QScopedValueRollback<bool> pasting(m_pasting, true);
        Q_EMIT signalPaste(&filtered);
    }
    insert(filtered);
}

void MyMultiLineEdit::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn && isControl(event, Qt::Key_V)) {
        pasteText(QApplication::clipboard()->text());
        event->accept();
        return;
    }
    if (!isReturn && !isReadOnly() && isTyping(event)) {
        QKeyEvent filtered(event->type(), event->key(), event->modifiers(),
                           permitted(event->text()), event->isAutoRepeat(),
                           static_cast<quint16>(event->count()));
        QMultiLineEdit::keyPressEvent(&filtered);
    } else {
        QMultiLineEdit::keyPressEvent(event);
    }
    if (isControl(event, Qt::Key_C) || isControl(event, Qt::Key_X)) {
        tellPasteAvailable();
    }
}

void MyMultiLineEdit::tellPasteAvailable()
{
    if (!m_pasting) {
        const QScopedValueRollback<bool> pasting(m_pasting, true);
        Q_EMIT pasteAvailable(!QApplication::clipboard()->text().isEmpty());
    }
}

void MyMultiLineEdit::focusInEvent(QFocusEvent *event)
{
    Q_EMIT copyAvailable(hasMarkedText());
    QMultiLineEdit::focusInEvent(event);
}

void MyMultiLineEdit::focusOutEvent(QFocusEvent *event)
{
    const QWidget *next = QApplication::focusWidget();
    // Cut and Copy in the menu act on the selection, so it must survive the opening of the menu.
    const bool isForMenu
        = event->reason() == Qt::MenuBarFocusReason || event->reason() == Qt::PopupFocusReason;
    if (next != nullptr && next != this && !isForMenu) {
        QTextCursor cursor = textCursor();
        cursor.clearSelection();
        setTextCursor(cursor);
        if (qobject_cast<const QMultiLineEdit *>(next) == nullptr) {
            Q_EMIT copyAvailable(false);
        }
    }
    QMultiLineEdit::focusOutEvent(event);
}
