// SPDX-License-Identifier: MIT
#include "items/thumbnailDecode.h"

#include "app/common/memory.h"
#include "items/openPhoto.h"
#include "items/photoScale.h"

#include <QImage>

#include <utility>

namespace {

constexpr int kGray = 1;
constexpr int kRgb = 3;

/// In place. From the right end, because a pixel is wider than its samples.
void widenRow(uchar *row, int width)
{
    auto *pixels = static_cast<QRgb *>(static_cast<void *>(row));
    for (int x = width - 1; x >= 0; --x) {
        const uchar *samples = row + qsizetype(kRgb) * x;
        pixels[x] = qRgb(samples[0], samples[1], samples[2]);
    }
}

/// Null without the memory for it. A null image if libjpeg failed.
std::unique_ptr<QImage> readWhole(lumi::JpegSession &session)
{
    const QSize size = session.outputSize();
    const int components = session.components();
    const auto format = components == kGray ? QImage::Format_Grayscale8 : QImage::Format_RGB32;
    if (lumi::thumbnailNeedKB(session.imageSize().width(), size.height()) > freeMemoryKB()) {
        return nullptr;
    }
    auto image = std::make_unique<QImage>(size, format);
    if (image->isNull()) {
        return nullptr;
    }
    if (!session.readLines(image->bits(), image->bytesPerLine(), size.height())
        || !session.finish()) {
        return std::make_unique<QImage>();
    }
    for (int y = 0; components == kRgb && y < size.height(); ++y) {
        widenRow(image->scanLine(y), size.width());
    }
    return image;
}

/// Scaling turns a gray picture into one with colours.
void makeGrayAgain(QImage *image)
{
    QList<QRgb> table(256);
    for (int i = 0; i < table.size(); ++i) {
        table[i] = qRgb(i, i, i);
    }
    image->convertTo(QImage::Format_Grayscale8);
    (void)image->reinterpretAsFormat(QImage::Format_Indexed8);
    image->setColorTable(table);
}

lumi::DecodedThumbnail failure(lumi::DecodeError error)
{
    return {nullptr, error};
}

} // namespace

lumi::DecodedThumbnail lumi::decodeThumbnail(const QString &path, QSize size)
{
    OpenedPhoto photo = openPhoto(path, &size, DecodeFor::Thumbnail);
    if (!photo.session) {
        return failure(photo.error == DecodeError::None ? DecodeError::Undecodable : photo.error);
    }
    if (size.isEmpty()) {
        return {};
    }
    const bool gray = photo.session->components() == kGray;
    std::unique_ptr<QImage> image = readWhole(*photo.session);
    photo.session.reset();
    if (!image || image->isNull()) {
        return failure(image ? DecodeError::Undecodable : DecodeError::OutOfMemory);
    }
    *image = photo.orientation.scaled(*image, size);
    if (image->isNull()) {
        return failure(DecodeError::OutOfMemory);
    }
    if (gray) {
        makeGrayAgain(image.get());
    }
    return {std::move(image), DecodeError::None};
}
