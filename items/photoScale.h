// SPDX-License-Identifier: MIT
// The arithmetic of photo sizes: fitting into a box, the decoder's scales 1/1, 1/2, 1/4 and
// 1/8, and how much memory and work a decode may need. All sizes may come from a lying header,
// so products are made in 64 bits.
#pragma once

#include <QSize>
#include <QtGlobal>

namespace lumi {

/// From this many pixels on a photo is halved for the screen.
inline constexpr qint64 kScreenPixelLimit = 0x800000;

/// Bytes that the decoder needs to hold a block of 8 x 8 samples.
inline constexpr qint64 kBlockBytes = 128;

/// KB in which the decoder may hold a photo of several scans for a thumbnail. A progressive
/// photo of 12 megapixels takes 36 to 72, with four samples a pixel 92 MB.
inline constexpr qint64 kMostThumbnailKB = 96 * 1024;

/// Blocks that all scans of a photo together may read for a thumbnail: each block of the largest
/// photo six times, as the usual progressive photo does. A photo of a single scan may have 200
/// megapixels with the usual sampling.
inline constexpr qint64 kThumbnailReads = 6 * kMostThumbnailKB * 1024 / kBlockBytes;

/// The same for the screen. The viewer reads in pieces, so this only bounds how long a photo may
/// keep the user waiting.
inline constexpr qint64 kScreenReads = 64 * 1024 * 1024;

/// The largest size of the photo's proportions in the box, each side at least 1; (0, 0) where
/// a side of either is not positive.
[[nodiscard]] QSize fittedSize(QSize photo, QSize box);

/// Whether a thumbnail of this size may have been made of the photo. A thumbnail may have been
/// fitted by the size of another thumbnail, so more than one rounding is allowed for.
[[nodiscard]] bool isThumbnailSizeOf(QSize photo, QSize thumbnail);

/// 1, 2, 4 or 8: the largest denominator at which the photo still covers wanted on both axes,
/// going by its sides divided without remainder. 1 where a wanted side is 0.
[[nodiscard]] int coveringDenominator(QSize photo, QSize wanted);

/// The first denominator, found by halving, that brings the photo below kScreenPixelLimit; 0
/// if not even 8 does.
[[nodiscard]] int screenDenominator(QSize photo);

/// What the decoder makes of the photo at 1 / denominator.
[[nodiscard]] QSize decodedSize(QSize photo, int denominator);

/// KB of free memory a progressive photo must find before it is decoded.
[[nodiscard]] qint64 progressiveNeedKB(QSize photo);

/// The same for a thumbnail decode. It goes by the unscaled width.
[[nodiscard]] qint64 thumbnailNeedKB(int photoWidth, int decodedHeight);

/// The same for a screen decode. depth in bits.
[[nodiscard]] qint64 screenNeedKB(int photoWidth, QSize decoded, int depth);

/// How many decoded lines of this many bytes are held at once: mostLines, a power of two, or as
/// often halved as the spare megabyte of a screen decode demands. At least 1.
[[nodiscard]] int heldLines(qint64 lineBytes, int mostLines);

} // namespace lumi
