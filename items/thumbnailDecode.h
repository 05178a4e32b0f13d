// SPDX-License-Identifier: MIT
// The thumbnail way of decoding: the whole photo at once, at the smallest scale that covers the
// wanted size, then smooth-scaled to exactly that size.
#pragma once

#include "items/FPVItemImage.h"

#include <QSize>
#include <QString>

namespace lumi {

/// A new image of exactly this size, 8 bits with a gray table for a gray photo and 32 bits for
/// any other; null on failure, with the cause in *error.
[[nodiscard]] QImage *decodeThumbnail(const QString &path, QSize size, DecodeError *error);

} // namespace lumi
