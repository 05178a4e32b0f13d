// SPDX-License-Identifier: MIT
// The arithmetic of photo sizes: fitting into a box, the decoder's scales 1/1, 1/2, 1/4 and
// 1/8, and how much memory a decode needs. All sizes may come from a lying header, so products
// are made in 64 bits.
#pragma once

#include <QSize>
#include <QtGlobal>

namespace lumi {

/// From this many pixels on a photo is halved for the screen.
inline constexpr qint64 kScreenPixelLimit = 0x800000;

/// The largest size of the photo's proportions in the box, each side at least 1; (0, 0) where
/// a side of either is not positive.
[[nodiscard]] QSize fittedSize(QSize photo, QSize box);

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

/// These KB in bytes as the decoder's memory limit takes them: at least 1, since 0 means no
/// limit, and never above most.
[[nodiscard]] qint64 memoryLimit(int kilobytes, qint64 most);

/// How many decoded lines of this many bytes are held at once: mostLines, a power of two, or as
/// often halved as the spare megabyte of a screen decode demands. At least 1.
[[nodiscard]] int heldLines(qint64 lineBytes, int mostLines);

} // namespace lumi
