// SPDX-License-Identifier: MIT
// A one-line field of the Exif editor. Accepts only the characters that its tag can hold, from
// keys, clipboard and input methods. Signals tell the window what can be cut, copied or pasted, and
// let it handle a pasted text itself.
#pragma once

#include "exif/ui/characterFilter.h"
#include "platform/toolkit/QMultiLineEdit.h"

class MyMultiLineEdit : public QMultiLineEdit
{
    Q_OBJECT

public:
    explicit MyMultiLineEdit(QWidget *parent = nullptr);

    /// See lumi::filterCharacters(). All characters are accepted by default.
    void setCharMask(int mask) { m_charMask = mask; }

    [[nodiscard]] int charMask() const { return m_charMask; }

    [[nodiscard]] QString filterText(const QString &text) const;

Q_SIGNALS:
    /// Something was cut or copied. available: whether the clipboard holds text now.
    void pasteAvailable(bool available);
    /// The filtered text is about to be pasted. The receiver may change it, or clear it.
    void signalPaste(QString *text);

protected:
    void newLine() override { } // the field stays one line

    void pasteText(const QString &text) override;

    /// Like filterText(), and without control characters: they can be pasted, but not typed.
    [[nodiscard]] QString permitted(const QString &text) const override;

    [[nodiscard]] bool isFiltered() const override { return m_charMask != lumi::kAnyCharacters; }

    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

    /// Tab leaves the field.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the text field would insert a tab
    bool focusNextPrevChild(bool next) override { return QWidget::focusNextPrevChild(next); }

private:
    void tellPasteAvailable();

    int m_charMask = lumi::kAnyCharacters;
    bool m_pasting = false;
};
