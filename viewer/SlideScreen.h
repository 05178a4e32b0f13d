// SPDX-License-Identifier: MIT
// The rasters of a slideshow and the screen memory that they are drawn into. Three rasters are
// held: the next, the present and the previous one. One raster may stand in two of these places.
// Owns: the rasters.
#pragma once

#include "items/FPVItemImage.h"
#include "viewer/slideDrawing.h"

#include <QPointer>
#include <QSize>

#include <memory>

class QWidget;

namespace lumi {

/// A decoded picture with its pixels.
struct SlideRaster
{
    std::unique_ptr<uchar[]> bits;
    QSize size;                  ///< upright
    QPointer<FPVItemImage> item; ///< null once the item has been deleted
};

using SlideRasterPtr = std::shared_ptr<const SlideRaster>;

class SlideScreen
{
public:
    /// widget: lent; covers the screen.
    SlideScreen(QWidget *widget, QSize size);

    [[nodiscard]] QSize size() const { return m_size; }

    [[nodiscard]] int depth() const { return m_depth; }

    void setNext(SlideRasterPtr raster) { m_next = std::move(raster); }

    [[nodiscard]] bool hasNext() const { return m_next != nullptr; }

    /// The next raster was not drawn yet.
    [[nodiscard]] bool isNextNew() const { return m_next && m_next != m_present; }

    [[nodiscard]] bool hasPresent() const { return m_present != nullptr; }

    [[nodiscard]] bool hasPrevious() const { return m_previous != nullptr; }

    [[nodiscard]] bool isPrevious(const FPVItemImage *item) const;

    /// Draw the next or the previous raster, without a sign. It becomes the present one, whose
    /// picture is returned.
    FPVItemImage *showNext();
    FPVItemImage *showPrevious();
    /// Draws the present raster and the sign. Does nothing without a present raster.
    void redraw();

    [[nodiscard]] SlideSign sign() const { return m_sign; }

    /// Redrawing leaves the sign out.
    void forgetSign() { m_sign = SlideSign::None; }

    void drawSign(SlideSign sign);

private:
    template <class Draw> void drawInto(Draw draw);

    QWidget *m_widget;
    QSize m_size;
    int m_depth;
    SlideRasterPtr m_next;
    SlideRasterPtr m_present;
    SlideRasterPtr m_previous;
    SlideSign m_sign = SlideSign::None;
};

} // namespace lumi
