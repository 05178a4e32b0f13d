// SPDX-License-Identifier: MIT
// A scroll area with mouse events and child positions in coordinates of its contents. The views of
// this program switch its bars off and have their own; they use its viewport, frame and focus.
#pragma once

#include <QAbstractScrollArea>
#include <QEvent>

class QScrollView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    enum ScrollBarMode { Auto, AlwaysOff, AlwaysOn };

    explicit QScrollView(QWidget *parent = nullptr, const char *name = nullptr);

    /// A bar that is always off doesn't scroll at all, so that keys and wheel move nothing.
    void setHScrollBarMode(ScrollBarMode mode);
    void setVScrollBarMode(ScrollBarMode mode);

    /// The size of the contents in pixels; the children keep theirs.
    void resizeContents(int width, int height);

    /// Makes the widget a child of the viewport, at this place of the contents; does not show it.
    void addChild(QWidget *child, int x = 0, int y = 0);

    /// The viewport's size in pixels.
    [[nodiscard]] int visibleWidth() const;
    [[nodiscard]] int visibleHeight() const;

protected:
    /// Positions are those in the contents; an event not accepted goes on to the parent.
    /// The second press of a double click is a press.
    virtual void contentsMousePressEvent(QMouseEvent *event);
    virtual void contentsMouseMoveEvent(QMouseEvent *event);

    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    using Handler = void (QScrollView::*)(QMouseEvent *);

    [[nodiscard]] QPoint contentsOrigin() const;
    void forward(QMouseEvent *event, QEvent::Type type, Handler handler);
    void updateRanges();

    QSize m_contents;
};
