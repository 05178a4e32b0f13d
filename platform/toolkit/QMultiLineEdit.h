// SPDX-License-Identifier: MIT
// A field for plain text with a set height in lines. Until the user changes the text, text()
// returns exactly what was set. The maximum length limits what is inserted, not what is there. The
// field accepts no drops and has no menu, so text is entered by keys, by the clipboard and by an
// input method.
#pragma once

#include <QPlainTextEdit>

#include <optional>

class QMultiLineEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit QMultiLineEdit(QWidget *parent = nullptr, const char *name = nullptr);

    /// Sets a text of any length. This can't be undone.
    void setText(const QString &text);
    /// As if the user had typed the text: undo restores the old one.
    void replaceText(const QString &text);
    [[nodiscard]] QString text() const;

    /// Replaces the marked text by as much of the text as fits. Does nothing if none of it fits.
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

    /// The accepted part of a composed text.
    [[nodiscard]] virtual QString permitted(const QString &text) const { return text; }

    /// Whether any letters are refused.
    [[nodiscard]] virtual bool isFiltered() const { return false; }

    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QString documentText() const;
    /// The beginning of the text that fits in place of the marked text.
    [[nodiscard]] QString fitting(const QString &text, int replaced = 0) const;
    void noteChange();
    void fixHeight();

    std::optional<QString> m_given; // the text of setText() until it is changed
    QString m_seen;
    bool m_edited = false;
    int m_maxLength = -1;
    int m_visibleLines = 0;
};
