// SPDX-License-Identifier: MIT
// A check box that is a picture and takes no keyboard focus.
#pragma once

#include "widgets/AccessibleControl.h"

#include <QCheckBox>
#include <QPixmap>

class MyImageCheckBox : public QCheckBox, public lumi::AccessibleControl
{
    Q_OBJECT

public:
    /// The box has the size of the first picture. It is also shown in the half-checked state.
    MyImageCheckBox(const QPixmap &checked, const QPixmap &unchecked, QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;

    /// Qt's own description has the rectangle of a plain check box.
    [[nodiscard]] QAccessible::Role accessibleRole() const override
    {
        return QAccessible::CheckBox;
    }

    void addAccessibleState(QAccessible::State *state) const override;

    void press() override { click(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint &position) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_checked;
    QPixmap m_unchecked;
};
