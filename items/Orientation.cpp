// SPDX-License-Identifier: MIT
#include "items/Orientation.h"

#include "exif/read/ExifSegment.h"
#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"
#include "platform/Machine.h"
#include "platform/files/fileCalls.h"

#include <QBuffer>
#include <QFile>
#include <QtEndian>

namespace {

/// The longest segment and what may stand before it.
constexpr qint64 kHeadBytes = qint64{128} * 1024;
constexpr int kSegmentHeadBytes = 4; // marker and length
constexpr char kStartOfScan = '\xDA';

/// The beginning of a photo from its Exif segment on, as if nothing stood before the segment. Many
/// programs write a JFIF segment there. Empty without an Exif segment.
QByteArray fromExifSegment(const QByteArray &head)
{
    const QByteArray exifMark(lumi::kExifMark, sizeof lumi::kExifMark);
    const qsizetype least = kSegmentHeadBytes + exifMark.size();
    qsizetype at = head.startsWith(lumi::kStartOfImage) ? 2 : head.size();
    while (at + least <= head.size() && head[at] == '\xFF' && head[at + 1] != kStartOfScan) {
        const QByteArrayView segment = QByteArrayView(head).sliced(at);
        if (segment.startsWith(lumi::kApp1Marker)
            && segment.sliced(kSegmentHeadBytes).startsWith(exifMark)) {
            return lumi::kStartOfImage + segment.toByteArray();
        }
        at += 2 + qFromBigEndian<quint16>(segment.data() + 2);
    }
    return {};
}

/// 0 if there is none.
int storedValue(const QString &path)
{
    const lumi::Descriptor descriptor = lumi::openRegular(path);
    QFile file;
    if (!descriptor.isOpen()
        || !file.open(descriptor.get(), QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return 0;
    }
    QByteArray bytes = fromExifSegment(file.read(kHeadBytes));
    QBuffer buffer(&bytes);
    lumi::ExifSegment segment(buffer);
    lumi::ExifTagList tags;
    quint32 unusedLink = 0;
    if (!buffer.open(QIODevice::ReadOnly) || !segment.load()
        || !segment.readIfd(segment.ifd0Offset(), tags, unusedLink)) {
        return 0;
    }
    const FPVExifTag *tag = tags.findNumber(lumi::kTagOrientation);
    return tag != nullptr && tag->type() == lumi::TiffShort ? tag->intValue() : 0;
}

} // namespace

lumi::Orientation::Orientation(int value)
{
    if (value < 1 || value > 8) {
        return;
    }
    // 1 and 5 mirror nothing, 2 and 6 X, 3 and 7 both, 4 and 8 Y.
    const int mirroring = (value - 1) % 4;
    m_exchangesAxes = value > 4;
    m_mirrorsX = mirroring == 1 || mirroring == 2;
    m_mirrorsY = mirroring >= 2;
}

lumi::Orientation lumi::Orientation::of(const QString &path)
{
    return Machine::instance().showsUpright() ? Orientation(storedValue(path)) : Orientation();
}

QSize lumi::Orientation::turned(QSize size) const
{
    return m_exchangesAxes ? size.transposed() : size;
}

QPoint lumi::Orientation::upright(QPoint pixel, QSize stored) const
{
    const QSize size = turned(stored);
    const QPoint at = m_exchangesAxes ? pixel.transposed() : pixel;
    return {m_mirrorsX ? size.width() - 1 - at.x() : at.x(),
            m_mirrorsY ? size.height() - 1 - at.y() : at.y()};
}

QImage lumi::Orientation::scaled(const QImage &stored, QSize size) const
{
    // Scaled first, because the result is the smaller picture.
    QImage image = stored.scaled(turned(size), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (!m_exchangesAxes && !m_mirrorsX && !m_mirrorsY) {
        return image;
    }
    QImage result(turned(image.size()), image.format());
    if (result.isNull()) {
        return {};
    }
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            result.setPixel(upright({x, y}, image.size()), image.pixel(x, y));
        }
    }
    return result;
}
