// SPDX-License-Identifier: MIT
// A field for plain text that is as many lines high as it was told. It never loses anything of
// the text it was given: text() gives that back to the byte until the user changes it, and the
// maximum length stops what comes in, not what is there. Nothing can be dropped on it and it
// has no menu of its own, so text comes in by keys, by the clipboard and by an input method.
#pragma once

#include <QPlainTextEdit>

#include <optional>

class QMultiLineEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit QMultiLineEdit(QWidget *parent = nullptr, const char *name = nullptr);

    /// Takes a text of any length; there is no way back by undo.
    void setText(const QString &text);
    /// The same as if the user had typed it: undo brings the old text back.
    void replaceText(const QString &text);
    [[nodiscard]] QString text() const;

    /// Puts as much of the text as there is room for in place of the marked text; nothing at
    /// all happens when that is nothing.
    void insert(const QString &text);

    [[nodiscard]] bool hasMarkedText() const { return textCursor().hasSelection(); }

    /// In UTF-16 units; -1, the default, for no limit.
    void setMaxLength(int length) { m_maxLength = length; }

    [[nodiscard]] int maxLength() const { return m_maxLength; }

    /// Whether the text has changed since setEdited(false), even if it changed back.
    [[nodiscard]] bool edited() const { return m_edited; }

    void setEdited(bool edited) { m_edited = edited; }

    /// Fixes the height; a field is at least as high as a fingertip needs.
    void setFixedVisibleLines(int lines);

protected:
    /// Return and Enter come here, with and without modifiers.
    virtual void newLine();
    /// Text from the clipboard that does not come by a key of a derived class.
    virtual void pasteText(const QString &text);

    /// What of a composed text may come in.
    [[nodiscard]] virtual QString permitted(const QString &text) const { return text; }

    /// Whether there are letters that may not.
    [[nodiscard]] virtual bool isFiltered() const { return false; }

    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QString documentText() const;
    /// The beginning of the text for which there is room in place of the marked text.
    [[nodiscard]] QString fitting(const QString &text, int replaced = 0) const;
    void noteChange();
    void fixHeight();

    std::optional<QString> m_given; // the text of setText() while nobody changed it
    QString m_seen;
    bool m_edited = false;
    int m_maxLength = -1;
    int m_visibleLines = 0;
};
