// SPDX-License-Identifier: MIT
// A button that is a picture: one of five pixmaps is shown by its state. It can be clicked
// with the pen, by Space (at the release) and by Return or Enter (at the press); the arrow
// keys move the focus along the buttons. A drag off the button cancels the click.
#pragma once

#include "widgets/AccessibleControl.h"

#include <QLabel>
#include <QPixmap>

class MyImageButton : public QLabel, public lumi::AccessibleControl
{
    Q_OBJECT

public:
    /// Paints the focus frame onto the button; called during the button's paint event.
    using FocusPainter = void (*)(MyImageButton *button);

    /// @param focusPainter null for a plain yellow frame of three pixels
    explicit MyImageButton(QWidget *parent, FocusPainter focusPainter = nullptr);

    /// Also used for each other picture that is null. Sets the size of the button.
    void setNormalPixmap(const QPixmap &pixmap);
    void setPressedPixmap(const QPixmap &pixmap);
    void setOnPixmap(const QPixmap &pixmap);
    void setOnPressedPixmap(const QPixmap &pixmap);
    void setDisabledPixmap(const QPixmap &pixmap);

    void setOn(bool on);

    [[nodiscard]] bool isOn() const { return m_on; }

    [[nodiscard]] bool isPressed() const { return m_pressed; }

    /// Hides the base function: it is not virtual, so call it on the button's own type.
    void setEnabled(bool enabled);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Button; }

    void addAccessibleState(QAccessible::State *state) const override;
    void press() override;

Q_SIGNALS:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] const QPixmap &statePixmap() const;
    [[nodiscard]] bool hasPictures() const;
    void setPressed(bool pressed);
    void showState();

    QPixmap m_normal;
    QPixmap m_pressedPixmap;
    QPixmap m_onPixmap;
    QPixmap m_onPressed;
    QPixmap m_disabled;
    FocusPainter m_focusPainter;
    bool m_pressed = false;
    bool m_on = false;
    bool m_enabled = true;
};
