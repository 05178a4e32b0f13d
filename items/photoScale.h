// SPDX-License-Identifier: MIT
// The arithmetic of photo sizes: fitting into a box, the decoder's scales 1/1, 1/2, 1/4 and 1/8,
// and the memory and work of a decode. Sizes may come from an invalid header, so products are
// computed in 64 bits.
#pragma once

#include <QSize>
#include <QtGlobal>

namespace lumi {

/// A photo of this many pixels or more is halved for the screen.
inline constexpr qint64 kScreenPixelLimit = 0x800000;

/// Bytes that the decoder needs to hold a block of 8 x 8 samples.
inline constexpr qint64 kBlockBytes = 128;

/// KB in which the decoder may hold a photo of several scans for a thumbnail. A progressive
/// photo of 12 megapixels takes 36 to 72, with four samples a pixel 92 MB.
inline constexpr qint64 kMostThumbnailKB = qint64{96} * 1024;

/// Blocks that all scans of a photo together may read for a thumbnail. The limit allows six reads
/// of each block of the largest photo, as in the usual progressive photo. A photo of a single scan
/// may have 200 megapixels with the usual sampling.
inline constexpr qint64 kThumbnailReads = 6 * kMostThumbnailKB * 1024 / kBlockBytes;

/// The same for the screen. The viewer reads in pieces, so this only limits the waiting time.
inline constexpr qint64 kScreenReads = qint64{64} * 1024 * 1024;

/// The largest size with the photo's proportions in the box, each side at least 1. (0, 0) if a side
/// of either is not positive.
[[nodiscard]] QSize fittedSize(QSize photo, QSize box);

/// Whether a thumbnail of this size may have been made from the photo. A thumbnail may have been
/// fitted by the size of another thumbnail, so more than one rounding is tolerated.
[[nodiscard]] bool isThumbnailSizeOf(QSize photo, QSize thumbnail);

/// 1, 2, 4 or 8: the largest denominator at which the photo covers wanted on both axes. Its sides
/// are divided without remainder. 1 if a wanted side is 0.
[[nodiscard]] int coveringDenominator(QSize photo, QSize wanted);

/// 1, 2, 4 or 8: the smallest denominator at which the photo is below kScreenPixelLimit. 0 if 8 is
/// not enough.
[[nodiscard]] int screenDenominator(QSize photo);

/// The size that the decoder gives at 1 / denominator.
[[nodiscard]] QSize decodedSize(QSize photo, int denominator);

/// KB of free memory that the decode of a progressive photo requires.
[[nodiscard]] qint64 progressiveNeedKB(QSize photo);

/// The same for a thumbnail decode. It depends on the unscaled width.
[[nodiscard]] qint64 thumbnailNeedKB(int photoWidth, int decodedHeight);

/// The same for a screen decode. depth in bits.
[[nodiscard]] qint64 screenNeedKB(int photoWidth, QSize decoded, int depth);

/// How many decoded lines of this many bytes are held at once: mostLines, a power of two, halved
/// until they fit into the spare megabyte of a screen decode. At least 1.
[[nodiscard]] int heldLines(qint64 lineBytes, int mostLines);

} // namespace lumi
