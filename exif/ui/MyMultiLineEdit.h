// SPDX-License-Identifier: MIT
// A one-line field of the Exif editor that lets in only the characters its tag can hold,
// whatever way they come: by keys, from the clipboard, from an input method. Its form hears
// when there is something to cut, copy or paste, and may take a pasted text for itself.
#pragma once

#include "exif/ui/characterFilter.h"
#include "platform/toolkit/QMultiLineEdit.h"

class MyMultiLineEdit : public QMultiLineEdit
{
    Q_OBJECT

public:
    explicit MyMultiLineEdit(QWidget *parent = nullptr);

    /// At first everything is let in; see lumi::filterCharacters().
    void setCharMask(int mask) { m_charMask = mask; }

    [[nodiscard]] int charMask() const { return m_charMask; }

    [[nodiscard]] QString filterText(const QString &text) const;

Q_SIGNALS:
    /// Something was cut or copied: whether the clipboard holds text now.
    void pasteAvailable(bool available);
    /// Text is about to be pasted, filtered already. The receiver may change it; an empty text
    /// inserts nothing.
    void signalPaste(QString *text);

protected:
    void newLine() override { } // the field stays one line

    void pasteText(const QString &text) override;

    /// What the mask lets in, but for control characters: those are pasted, not typed.
    [[nodiscard]] QString permitted(const QString &text) const override;

    [[nodiscard]] bool isFiltered() const override { return m_charMask != lumi::kAnyCharacters; }

    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

    /// Tab leaves the field.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): a text field's own way is not wanted here
    bool focusNextPrevChild(bool next) override { return QWidget::focusNextPrevChild(next); }

private:
    void tellPasteAvailable();

    int m_charMask = lumi::kAnyCharacters;
    bool m_pasting = false;
};
