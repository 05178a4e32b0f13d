// SPDX-License-Identifier: MIT
// One decoded picture of the slideshow. Up to three are held: the next, the present and the
// last one; a picture may stand in two of these places at once, so they share it.
// Owns: the pixels.
#pragma once

#include "items/FPVItemImage.h"

#include <QPointer>
#include <QSize>

#include <memory>

namespace lumi {

struct SlideRaster
{
    std::unique_ptr<uchar[]> bits;
    QSize size;                  ///< upright
    QPointer<FPVItemImage> item; ///< whose picture it is, as long as that lives
};

using SlideRasterPtr = std::shared_ptr<const SlideRaster>;

} // namespace lumi
