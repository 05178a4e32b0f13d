// SPDX-License-Identifier: MIT
#include "platform/toolkit/QMultiLineEdit.h"

#include "platform/screen/panel.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextDocument>

#include <algorithm>

namespace {

constexpr int kLeastMargin = 4;

bool isReturn(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

bool isTab(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
}

} // namespace

QMultiLineEdit::QMultiLineEdit(QWidget *parent, const char *name)
    : QPlainTextEdit(parent)
{
    setObjectName(QString::fromLatin1(name));
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    setAcceptDrops(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    connect(document(), &QTextDocument::contentsChange, this, &QMultiLineEdit::noteChange);
}

void QMultiLineEdit::setText(const QString &text)
{
    setPlainText(text);
    m_seen = documentText();
    m_edited = true;
    m_given = text;
}

void QMultiLineEdit::replaceText(const QString &text)
{
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(text);
    setTextCursor(cursor);
    m_edited = true;
}

QString QMultiLineEdit::text() const
{
    return m_given ? *m_given : documentText();
}

QString QMultiLineEdit::documentText() const
{
    // toPlainText() would replace non-breaking blanks by ordinary ones.
    QString text = document()->toRawText();
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

void QMultiLineEdit::noteChange()
{
    // Also called while an input method composes a text, and after changes of format only.
    QString text = documentText();
    if (text != m_seen) {
        m_seen = std::move(text);
        m_edited = true;
        m_given.reset();
    }
}

QString QMultiLineEdit::fitting(const QString &text, int replaced) const
{
    if (m_maxLength < 0) {
        return text;
    }
    const QTextCursor cursor = textCursor();
    const int marked = cursor.selectionEnd() - cursor.selectionStart();
    const int length = document()->characterCount() - 1;
    const qsizetype room = std::max(0, m_maxLength - length + marked + replaced);
    if (text.size() <= room) {
        return text;
    }
    const QString part = text.left(room);
    const bool isSplit = !part.isEmpty() && part.back().isHighSurrogate();
    return isSplit ? part.chopped(1) : part;
}

void QMultiLineEdit::insert(const QString &text)
{
    const QString part = fitting(text);
    if (!part.isEmpty()) {
        textCursor().insertText(part);
        ensureCursorVisible();
    }
}

void QMultiLineEdit::newLine()
{
    insert(QStringLiteral("\n"));
}

void QMultiLineEdit::pasteText(const QString &text)
{
    insert(text);
}

void QMultiLineEdit::keyPressEvent(QKeyEvent *event)
{
    if (isReturn(event)) {
        newLine();
        event->accept();
        return;
    }
    if (isTab(event)) {
        event->ignore();
        return;
    }
    // A tab is never inserted, whichever key sends it.
    const bool isTabText = event->text().startsWith(QLatin1Char('\t'));
    const QString text = isTabText ? QString() : fitting(event->text());
    if (text.size() == event->text().size()) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    QKeyEvent shortened(event->type(), event->key(), event->modifiers(), text,
                        event->isAutoRepeat(), static_cast<quint16>(event->count()));
    QPlainTextEdit::keyPressEvent(&shortened);
}

void QMultiLineEdit::inputMethodEvent(QInputMethodEvent *event)
{
    const int replaced = event->replacementLength();
    const QString composed = event->preeditString();
    const QString committed = fitting(permitted(event->commitString()), replaced);
    // Composed text replaces the marked text at once. Committed text replaces the text that it
    // corrects. If none of the new text is accepted, nothing is replaced. Composed letters may
    // change before the commit, so a field with a filter keeps the marked text until then.
    const bool isWaiting = isFiltered() && hasMarkedText() && committed.isEmpty();
    const bool isHidden
        = !composed.isEmpty() && (isWaiting || fitting(permitted(composed)).isEmpty());
    const bool isRefused = !event->commitString().isEmpty() && committed.isEmpty();
    using Attributes = QList<QInputMethodEvent::Attribute>;
    QInputMethodEvent allowed(isHidden ? QString() : composed,
                              isHidden ? Attributes() : event->attributes());
    if (!isRefused) {
        allowed.setCommitString(committed, event->replacementStart(), replaced);
    }
    QPlainTextEdit::inputMethodEvent(&allowed);
    event->setAccepted(allowed.isAccepted());
}

void QMultiLineEdit::insertFromMimeData(const QMimeData *source)
{
    if (!isReadOnly() && source->hasText()) {
        pasteText(source->text());
    }
}

void QMultiLineEdit::setFixedVisibleLines(int lines)
{
    m_visibleLines = lines;
    fixHeight();
}

void QMultiLineEdit::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fixHeight();
    }
}

void QMultiLineEdit::fixHeight()
{
    if (m_visibleLines <= 0) {
        return;
    }
    const int frame = 2 * frameWidth();
    const int lines = m_visibleLines * fontMetrics().lineSpacing();
    const int margin = std::max(kLeastMargin, (lumi::kFingerSize - frame - lines) / 2);
    document()->setDocumentMargin(margin);
    setFixedHeight(std::max(lumi::kFingerSize, lines + 2 * margin + frame));
}
