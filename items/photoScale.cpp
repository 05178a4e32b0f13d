// SPDX-License-Identifier: MIT
#include "items/photoScale.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int kMaxDenominator = 8;
constexpr qint64 kSpareBytes = 1048576;
constexpr qint64 kProgressiveBytesAPixel = 7;
constexpr qint64 kProgressiveSpareKB = 8192;
constexpr int kLineBytesAPixel = 4;
/// A side may be wrong by one pixel plus the longer side divided by this: a small thumbnail is
/// rounded, and a larger one may have been fitted by it.
constexpr qint64 kToleratedPart = 32;

int axisDenominator(int photo, int wanted)
{
    for (const int shift : {3, 2, 1}) {
        if (wanted <= photo >> shift) {
            return 1 << shift;
        }
    }
    return 1;
}

/// The length at this ratio, rounded half up, never below 1.
int scaledSide(int length, double ratio)
{
    return std::max(1, static_cast<int>(std::floor(length * ratio + 0.5)));
}

qint64 pixelCount(QSize size)
{
    return qint64(size.width()) * size.height();
}

} // namespace

QSize lumi::fittedSize(QSize photo, QSize box)
{
    if (photo.isEmpty() || box.isEmpty()) {
        return {0, 0};
    }
    const double widthRatio = double(box.width()) / photo.width();
    const double heightRatio = double(box.height()) / photo.height();
    if (widthRatio > heightRatio) {
        return {scaledSide(photo.width(), heightRatio), box.height()};
    }
    return {box.width(), scaledSide(photo.height(), widthRatio)};
}

bool lumi::isThumbnailSizeOf(QSize photo, QSize thumbnail)
{
    // Divided by the photo's longer side, this is the error of the thumbnail's shorter side.
    const qint64 error = std::abs(qint64(thumbnail.width()) * photo.height()
                                  - qint64(thumbnail.height()) * photo.width());
    const qint64 photoSide = std::max(photo.width(), photo.height());
    const qint64 thumbnailSide = std::max(thumbnail.width(), thumbnail.height());
    return error * kToleratedPart <= photoSide * (thumbnailSide + kToleratedPart);
}

int lumi::coveringDenominator(QSize photo, QSize wanted)
{
    if (wanted.width() == 0 || wanted.height() == 0) {
        return 1;
    }
    return std::min(axisDenominator(photo.width(), wanted.width()),
                    axisDenominator(photo.height(), wanted.height()));
}

int lumi::screenDenominator(QSize photo)
{
    for (int denominator = 1; denominator <= kMaxDenominator; denominator *= 2) {
        if (pixelCount(decodedSize(photo, denominator)) < kScreenPixelLimit) {
            return denominator;
        }
    }
    return 0;
}

QSize lumi::decodedSize(QSize photo, int denominator)
{
    return {(photo.width() + denominator - 1) / denominator,
            (photo.height() + denominator - 1) / denominator};
}

qint64 lumi::progressiveNeedKB(QSize photo)
{
    return ((pixelCount(photo) * kProgressiveBytesAPixel + kSpareBytes) >> 10)
        + kProgressiveSpareKB;
}

qint64 lumi::thumbnailNeedKB(int photoWidth, int decodedHeight)
{
    return (qint64(photoWidth) * decodedHeight + kSpareBytes / 4) >> 8;
}

qint64 lumi::screenNeedKB(int photoWidth, QSize decoded, int depth)
{
    const qint64 raster = pixelCount(decoded) * (depth >> 3);
    return (raster + qint64(photoWidth) * kLineBytesAPixel + kSpareBytes) >> 10;
}

int lumi::heldLines(qint64 lineBytes, int mostLines)
{
    int lines = mostLines;
    while (lines > 1 && lineBytes > kSpareBytes / lines) {
        lines /= 2;
    }
    return lines;
}
