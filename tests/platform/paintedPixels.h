// SPDX-License-Identifier: MIT
// Helpers for tests of direct painting: a pattern in which all neighbours and all corners differ,
// a function that writes it through a painter as viewers do, and screenshots.
#pragma once

#include "platform/screen/QDirectPainter.h"

#include <QGuiApplication>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <cstddef>
#include <cstring>

namespace lumi::test {

inline constexpr QRgb kYellow = 0xFFFFFF00U; ///< of a BareWindow

/// Pixel of the pattern at a place of the widget, as the memory of this depth holds it.
inline quint32 patternPixel(int x, int y, int depth)
{
    const auto column = static_cast<quint32>(x);
    const auto row = static_cast<quint32>(y);
    if (depth == 16) {
        return ((column & 31U) << 11) | ((row & 63U) << 5) | ((column * 7 + row * 3) & 31U);
    }
    return 0xFF000000U | ((column * 5 & 255U) << 16) | ((row * 3 & 255U) << 8)
        | ((column * 7 + row * 11) & 255U);
}

inline void writePixel(uchar *bits, int lineStep, int line, int pixel, quint32 value, int depth)
{
    uchar *at = bits + std::ptrdiff_t(line) * lineStep + std::ptrdiff_t(pixel) * (depth / 8);
    if (depth == 16) {
        const auto narrow = static_cast<quint16>(value);
        std::memcpy(at, &narrow, sizeof narrow);
    } else {
        std::memcpy(at, &value, sizeof value);
    }
}

/// Fills the whole area of the painter's widget with the pixels value(x, y).
template <typename Value> void drawWith(QDirectPainter &painter, Value value)
{
    uchar *bits = painter.frameBuffer();
    QVERIFY(bits != nullptr);
    for (int x = 0; x < painter.height(); ++x) {
        for (int y = 0; y < painter.width(); ++y) {
            writePixel(bits, painter.lineStep(), painter.yOffset() + x,
                       painter.xOffset() + painter.width() - 1 - y, value(x, y), painter.depth());
        }
    }
}

inline void drawPattern(QWidget *widget)
{
    QDirectPainter painter(widget);
    const int depth = painter.depth();
    drawWith(painter, [depth](int x, int y) {
        return patternPixel(x, y, depth);
    });
}

inline void drawColour(QWidget *widget, quint32 colour)
{
    QDirectPainter painter(widget);
    drawWith(painter, [colour](int, int) {
        return colour;
    });
}

/// Pixel of a picture of the screen, in the form of the given depth.
inline quint32 shownPixel(const QImage &shown, int x, int y, int depth)
{
    const QRgb rgb = shown.pixel(x, y);
    if (depth == 16) {
        return (quint32(qRed(rgb)) >> 3 << 11) | (quint32(qGreen(rgb)) >> 2 << 5)
            | (quint32(qBlue(rgb)) >> 3);
    }
    return 0xFF000000U | rgb;
}

/// The first place of `part` (in coordinates of the picture) that doesn't show the pattern
/// with (0, 0) at `origin`; empty if all do.
inline QString patternFault(const QImage &shown, const QRect &part, const QPoint &origin, int depth)
{
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const quint32 found = shownPixel(shown, x, y, depth);
            const quint32 wanted = patternPixel(x - origin.x(), y - origin.y(), depth);
            if (found != wanted) {
                return QStringLiteral("(%1, %2): %3 instead of %4")
                    .arg(QString::number(x), QString::number(y), QString::number(found, 16),
                         QString::number(wanted, 16));
            }
        }
    }
    return QString();
}

/// The first screen as the user sees it, with all its windows.
inline QImage screenShot()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

/// The part of the screen behind a widget.
inline QImage shotOf(const QWidget *widget)
{
    return screenShot().copy(QRect(widget->mapToGlobal(QPoint()), widget->size()));
}

/// A window without a frame, at exactly this place of the screen.
class BareWindow : public QWidget
{
public:
    explicit BareWindow(const QRect &geometry)
        : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
    {
        setGeometry(geometry);
        QPalette colours = palette();
        colours.setColor(QPalette::Window, Qt::yellow);
        setPalette(colours);
        setAutoFillBackground(true);
    }

    [[nodiscard]] bool showNow()
    {
        show();
        return QTest::qWaitForWindowExposed(this);
    }
};

/// Paints itself green and counts.
class GreenWindow : public BareWindow
{
public:
    using BareWindow::BareWindow;

    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        QPainter(this).fillRect(event->rect(), Qt::green);
    }
};

} // namespace lumi::test
