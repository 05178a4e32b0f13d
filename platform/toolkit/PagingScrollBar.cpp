// SPDX-License-Identifier: MIT
#include "platform/toolkit/PagingScrollBar.h"

PagingScrollBar::PagingScrollBar(Qt::Orientation orientation, QWidget *parent)
    : QScrollBar(orientation, parent)
{
    // The context menu would change the value without any of the signals below.
    setContextMenuPolicy(Qt::PreventContextMenu);
    connect(this, &QAbstractSlider::actionTriggered, this, &PagingScrollBar::takeAction);
}

void PagingScrollBar::mousePressEvent(QMouseEvent *event)
{
    m_beingPressed = true;
    QScrollBar::mousePressEvent(event);
    m_beingPressed = false;
}

void PagingScrollBar::takeAction(int action)
{
    // The base has moved the slider and sets the value only after this signal.
    switch (action) {
    case SliderSingleStepAdd:
        setValue(sliderPosition());
        Q_EMIT nextLine();
        break;
    case SliderSingleStepSub:
        setValue(sliderPosition());
        Q_EMIT prevLine();
        break;
    case SliderPageStepAdd:
        setValue(sliderPosition());
        Q_EMIT nextPage();
        break;
    case SliderPageStepSub:
        setValue(sliderPosition());
        Q_EMIT prevPage();
        break;
    default:
        takePlace();
        break;
    }
}

void PagingScrollBar::takePlace()
{
    // Drags, and clicks that move the slider to the pointer, are reported at the release. A wheel
    // turn at the end of the range changes nothing.
    if (m_beingPressed || isSliderDown() || sliderPosition() == value()) {
        return;
    }
    setValue(sliderPosition());
    Q_EMIT sliderReleased();
}
