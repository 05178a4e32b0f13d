// SPDX-License-Identifier: MIT
// One sample photo: what it shows and in which of the forms that cameras, phones and picture
// programs leave photos in. The bytes depend on nothing but these values.
#pragma once

#include "tools/photos/Scene.h"

#include <QByteArray>
#include <QSize>

#include <cstdint>

namespace lumi::photos {

enum Trait : unsigned {
    Plain = 0,
    Exif = 1,      ///< an Exif block
    Embedded = 2,  ///< with a thumbnail in it
    Gps = 4,       ///< with the place in it
    BigEndian = 8, ///< in the second camera's byte order
    Progressive = 16,
    Gray = 32,
    Jfif = 64,     ///< as saved by a picture program
    Comment = 128, ///< a user comment in the Exif block
    CutOff = 256,  ///< only the first part of the bytes, as after a copy that failed
    Camera = Exif | Embedded,
    OtherCamera = Exif | Embedded | BigEndian,
};

struct PhotoOrder
{
    SceneKind scene = SceneKind::Mountains;
    std::uint64_t seed = 1;
    QSize size{640, 480};
    unsigned traits = Plain; ///< of Trait
    int number = 1;          ///< of the shot: sets the time it was taken
    int quality = 88;
};

[[nodiscard]] QByteArray makePhoto(const PhotoOrder &order);

/// What makePhoto would put in front of the same picture for another shot: gives jpeg, a
/// stream without an Exif block, that block.
[[nodiscard]] QByteArray describePhoto(const QByteArray &jpeg, const PhotoOrder &order,
                                       const QByteArray &thumbnail);

/// The picture alone, at most 160 by 120, as cameras embed it.
[[nodiscard]] QByteArray makeThumbnail(const QImage &image, bool gray);

} // namespace lumi::photos
