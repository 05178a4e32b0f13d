// SPDX-License-Identifier: MIT
#include "widgets/MyImageCheckBox.h"

#include <QPainter>

MyImageCheckBox::MyImageCheckBox(const QPixmap &checked, const QPixmap &unchecked, QWidget *parent)
    : QCheckBox(parent)
    , m_checked(checked)
    , m_unchecked(unchecked)
{
    setFocusPolicy(Qt::NoFocus);
    setFixedSize(MyImageCheckBox::sizeHint());
}

QSize MyImageCheckBox::sizeHint() const
{
    return m_checked.deviceIndependentSize().toSize();
}

void MyImageCheckBox::addAccessibleState(QAccessible::State *state) const
{
    state->checkable = true;
    state->checked = checkState() != Qt::Unchecked;
}

bool MyImageCheckBox::hitButton(const QPoint &position) const
{
    return rect().contains(position);
}

void MyImageCheckBox::paintEvent(QPaintEvent * /*event*/)
{
    QPainter(this).drawPixmap(0, 0, checkState() == Qt::Unchecked ? m_unchecked : m_checked);
}
