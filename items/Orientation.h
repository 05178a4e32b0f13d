// SPDX-License-Identifier: MIT
// How the stored pixels of a photo are turned to be upright, from the Exif tag Orientation. Every
// way of decoding asks here, so that all pictures and sizes of a photo agree.
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>
#include <QString>

namespace lumi {

class Orientation
{
public:
    /// Pixels as stored.
    Orientation() = default;

    /// From the value of the tag, 1 to 8. Any other value means pixels as stored.
    explicit Orientation(int value);

    /// That of the photo at path. Pixels as stored if the tag is missing or cannot be read, or if
    /// the machine does not show photos upright.
    [[nodiscard]] static Orientation of(const QString &path);

    /// The upright size of a stored size, and also the stored size of an upright size.
    [[nodiscard]] QSize turned(QSize size) const;

    /// Where a stored pixel is in the upright picture. stored is the size of the stored picture.
    [[nodiscard]] QPoint upright(QPoint pixel, QSize stored) const;

    /// The stored picture, turned upright and smooth-scaled to this size. Null if there is no memory
    /// for it.
    [[nodiscard]] QImage scaled(const QImage &stored, QSize size) const;

private:
    // The columns and rows are exchanged first, then mirrored.
    bool m_exchangesAxes = false;
    bool m_mirrorsX = false;
    bool m_mirrorsY = false;
};

} // namespace lumi
