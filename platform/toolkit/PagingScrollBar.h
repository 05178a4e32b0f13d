// SPDX-License-Identifier: MIT
// A scroll bar that reports what the user did, for a view that rebuilds its page at each step and
// at the end of a drag; valueChanged() doesn't tell these apart. Arrows, groove and keys are
// steps. A wheel turn, Home and End are one sliderReleased(), like the end of a drag. The value is
// already the new one when a signal is sent.
#pragma once

#include <QScrollBar>

class PagingScrollBar : public QScrollBar
{
    Q_OBJECT

public:
    explicit PagingScrollBar(Qt::Orientation orientation, QWidget *parent = nullptr);

Q_SIGNALS:
    /// A step of one line or page, also at the end of the range.
    void nextLine();
    void prevLine();
    void nextPage();
    void prevPage();

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    void takeAction(int action);
    void takePlace();

    bool m_beingPressed = false;
};
