// SPDX-License-Identifier: MIT
// A widget with a tiled background picture. A palette brush would do the same but is inherited
// by every child, which then shows pieces of the picture instead of its own background.
#pragma once

#include <QPixmap>
#include <QWidget>

class BackgroundWidget : public QWidget
{
    Q_OBJECT

public:
    explicit BackgroundWidget(QWidget *parent = nullptr);

    /// The tiles start at the widget's top left. A null pixmap means the plain background.
    void setBackgroundPixmap(const QPixmap &pixmap);

    /// Without a layout, the size that holds all children where they are.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_background;
};
