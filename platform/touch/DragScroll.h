// SPDX-License-Identifier: MIT
// Lets a finger drag the contents of a scroll area. A drag selects no text and follows no link. Mouse
// and pen select text as usual.
#pragma once

#include <QObject>
#include <QPoint>

class QAbstractScrollArea;

namespace lumi {

class DragScroll : public QObject
{
    Q_OBJECT

public:
    /// The area becomes the parent.
    explicit DragScroll(QAbstractScrollArea *area);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAbstractScrollArea *m_area;
    QPoint m_pressed;  ///< global
    QPoint m_position; ///< global, of the last step
    bool m_isDragging = false;
};

} // namespace lumi
