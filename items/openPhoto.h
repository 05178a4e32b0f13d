// SPDX-License-Identifier: MIT
// From a path to a decompressor that stands before its first line: the one place that chooses
// the scale and asks for the memory of photos that the decoder must hold whole. A thumbnail gets
// less memory and less work than the screen.
#pragma once

#include "items/FPVItemImage.h"
#include "items/JpegSession.h"

#include <QSize>
#include <QString>

#include <memory>

namespace lumi {

/// Starts at the smallest scale that covers *wanted (unscaled if a side of it is 0), or, where
/// wanted is null, at the first one with fewer pixels than a screen raster may have.
/// Null on failure. *error is then OutOfMemory or Undecodable where the cause is known and
/// None where the file is missing or no JPEG file; it is None on success.
[[nodiscard]] std::unique_ptr<JpegSession> openPhoto(const QString &path, const QSize *wanted,
                                                     DecodeFor purpose, DecodeError *error);

/// The photo's size; (-1, -1), with the same errors, if the header cannot be read or decoding
/// cannot begin. A photo of several scans is judged by its header, since its decoding begins
/// with reading it whole.
[[nodiscard]] QSize readPhotoSize(const QString &path, DecodeError *error);

} // namespace lumi
