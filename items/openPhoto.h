// SPDX-License-Identifier: MIT
// Opens a photo and makes a decompressor that is ready for its first line. Only this file chooses
// the scale and checks the memory for photos that the decoder must hold whole. A thumbnail may take
// less memory and time than the screen.
#pragma once

#include "items/FPVItemImage.h"
#include "items/JpegSession.h"
#include "items/Orientation.h"

#include <QSize>
#include <QString>

#include <memory>

namespace lumi {

/// error says why session is null: OutOfMemory or Undecodable where the cause is known, None where
/// the file is missing or is no JPEG file.
struct OpenedPhoto
{
    std::unique_ptr<JpegSession> session;
    DecodeError error = DecodeError::None;
    Orientation orientation;
};

/// Starts at the smallest scale that covers the upright size *wanted (unscaled if a side of it is
/// 0). If wanted is null, it starts at the largest scale with fewer pixels than a screen raster may
/// have. The lines of the session are as stored.
[[nodiscard]] OpenedPhoto openPhoto(const QString &path, const QSize *wanted, DecodeFor purpose);

/// size is upright, or (-1, -1) if the header cannot be read or decoding cannot begin. error is as
/// above.
struct PhotoSize
{
    QSize size{-1, -1};
    DecodeError error = DecodeError::None;
};

/// Only the header is read of a photo of several scans, because its decoding would begin with
/// reading all of it.
[[nodiscard]] PhotoSize readPhotoSize(const QString &path);

} // namespace lumi
