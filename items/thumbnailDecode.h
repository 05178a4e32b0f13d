// SPDX-License-Identifier: MIT
// The thumbnail way of decoding: the whole photo at once, at the smallest scale that covers the
// wanted size, then smooth-scaled to exactly that size and turned upright.
#pragma once

#include "items/FPVItemImage.h"

#include <QSize>
#include <QString>

#include <memory>

class QImage;

namespace lumi {

/// error says why image is null.
struct DecodedThumbnail
{
    std::unique_ptr<QImage> image;
    DecodeError error = DecodeError::None;
};

/// The image has exactly this size: 8 bits with a gray table for a gray photo, 32 bits for any
/// other. For an empty size the photo is only opened, to find its error.
[[nodiscard]] DecodedThumbnail decodeThumbnail(const QString &path, QSize size);

} // namespace lumi
