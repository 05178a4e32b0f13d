// SPDX-License-Identifier: MIT
// A check box that is a picture and takes no keyboard focus.
#pragma once

#include <QCheckBox>
#include <QPixmap>

class MyImageCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    /// The box has the size of the first picture. It is also shown in the half-checked state.
    MyImageCheckBox(const QPixmap &checked, const QPixmap &unchecked, QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    [[nodiscard]] bool hitButton(const QPoint &position) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_checked;
    QPixmap m_unchecked;
};
