// SPDX-License-Identifier: MIT
// The screen memory that the viewers draw into, turned as the handheld's panel is: a desktop
// of W x H pixels has W lines of H pixels, and the pixel shown at (x, y) is pixel H-1-y of
// line x. A widget at (ax, ay) of size w x h has the lines from ax on, w of them, and of each
// the pixels from H-ay-h on, h of them; its top row is the last of these pixels. What was drawn
// for a widget (its surface) is painted into its window each time the widget is painted, so
// that other windows may come and go over it. All coordinates are logical pixels.
// Owns: the memory, as long as there is a surface or a painter at work.
#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QRegion>

class QPaintEvent;
class QWidget;

class FrameBuffer : public QObject
{
    Q_OBJECT

public:
    /// Where a widget lies on the desktop.
    struct Place
    {
        QPoint origin; ///< of the widget's top left corner
        QRect area;    ///< the part of the widget that is inside the desktop

        friend bool operator==(const Place &, const Place &) = default;
    };

    static FrameBuffer &instance();

    /// Bits of a pixel, 16 (RGB565) or 32, that the memory has or would have.
    [[nodiscard]] int depth() const;
    /// Size of the desktop, not turned, that the memory has or would have.
    [[nodiscard]] QSize desktopSize() const;
    /// Bytes from line to line: whole 32-bit words.
    [[nodiscard]] int lineStep() const;

    [[nodiscard]] bool isAllocated() const { return !m_image.isNull(); }

    /// A window that lies partly outside the desktop counts as moved inside. Parts of a window
    /// larger than the desktop are cut off.
    [[nodiscard]] Place place(const QWidget *widget) const;
    /// From the desktop to the turned memory.
    [[nodiscard]] QRect toBuffer(const QRect &rect) const;
    [[nodiscard]] QRegion toBuffer(const QRegion &region) const;

    /// The memory for a painter, or null if it can't be allocated; each open() needs a close().
    /// Depth and desktop size don't change in between. A visible widget has a surface from now
    /// on. If it has moved or grown since it was last drawn, its surface moves along, and new
    /// parts are black.
    [[nodiscard]] uchar *open(QWidget *widget, const Place &place);
    /// Shows what was drawn. Null if the widget has been deleted.
    void close(QWidget *widget);

    [[nodiscard]] bool hasSurface(const QWidget *widget) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    FrameBuffer() = default;

    bool allocate();
    void freeIfUnused();
    void movePixels(const Place &from, const Place &to);
    void drop(QObject *widget);
    void paint(QWidget *widget, QPaintEvent *event);

    QImage m_image;                           ///< as wide as the desktop is high
    QHash<const QObject *, Place> m_surfaces; ///< with the place each was drawn for
    int m_painters = 0;
};
