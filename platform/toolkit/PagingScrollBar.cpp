// SPDX-License-Identifier: MIT
#include "platform/toolkit/PagingScrollBar.h"

PagingScrollBar::PagingScrollBar(Qt::Orientation orientation, QWidget *parent)
    : QScrollBar(orientation, parent)
{
    // The menu of the base jumps about without a step or a drag that could be told on.
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
    // A drag, and a click that pulls the slider to itself, are told by the release. A wheel
    // turned against the end moves nothing.
    if (m_beingPressed || isSliderDown() || sliderPosition() == value()) {
        return;
    }
    setValue(sliderPosition());
    Q_EMIT sliderReleased();
}
