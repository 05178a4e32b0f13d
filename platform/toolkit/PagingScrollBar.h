// SPDX-License-Identifier: MIT
// A scroll bar that tells apart what the user did to it: a view that builds its pages anew
// wants to act once per step, and on a drag not before the slider is let go. valueChanged()
// can't say that. Arrows, groove and keys come as steps; whatever puts the bar to a place in
// one go (wheel, Home, End) comes as one sliderReleased(), as the end of a drag does.
// The value is the new one whenever a signal comes.
#pragma once

#include <QScrollBar>

class PagingScrollBar : public QScrollBar
{
    Q_OBJECT

public:
    explicit PagingScrollBar(Qt::Orientation orientation, QWidget *parent = nullptr);

Q_SIGNALS:
    /// One line or page on or back was asked for, even where the bar stands at its end.
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
