// SPDX-License-Identifier: MIT
// A picture file of any format: thumbnails, fitting, and the decoding interface with default
// implementations. Classes of formats that can be decoded derive from it.
// All pictures and sizes are upright, see Orientation.
// A screen decode fills a raster that is the upright photo turned 90 degrees clockwise. For a
// decoded size of W x H it has W rows of H pixels; column x of row r of the photo is at
// x * H + (H - 1 - r).
#pragma once

#include "items/FPVItemObject.h"

#include <QSize>

#include <memory>

class QImage;

namespace lumi {

/// Why a decode failed; the first cause stays until the next attempt.
enum class DecodeError : int { WrongDepth = 0, OutOfMemory = 2, Undecodable = 3, None = 4 };

/// Photo lines from one decodeUpdate() to the next.
inline constexpr int kSliceLines = 64;

} // namespace lumi

class FPVItemImage : public FPVItemObject
{
    Q_OBJECT

public:
    FPVItemImage() = default;
    FPVItemImage(const QString &path, const QString &displayName, bool checked);

    [[nodiscard]] int itemKind() const override;
    [[nodiscard]] int kindFlag1() const override;
    [[nodiscard]] int kindFlag2() const override;
    [[nodiscard]] QPixmap *thumbnail(int w, int h) override;

    /// The photo's own, upright size in pixels, (-1, -1) if it cannot be read.
    [[nodiscard]] virtual QSize imageSize();
    /// The largest size with the photo's proportions in box, each side at least 1. (0, 0) for a
    /// photo of unknown size.
    [[nodiscard]] virtual QSize fitSize(QSize box);
    /// A new image of exactly w x h, owned by the caller, or null.
    [[nodiscard]] virtual QImage *scaledImage(int w, int h);
    /// A new pixmap of exactly w x h, owned by the caller, or null. If the photo turns out to have
    /// been replaced by one of other proportions, the pixmap is fitted into w x h.
    [[nodiscard]] virtual QPixmap *scaledPixmap(int w, int h);
    [[nodiscard]] virtual QPixmap *decodedPixmap(int w, int h);
    /// Begins a screen decode into a raster of depth 16 or 32, at the smallest scale that covers
    /// *request. If request is null, the photo is halved until it has fewer than 8388608 pixels.
    /// outSize, unless null, receives the decoded, upright size. Emits decodeUpdate() before it
    /// returns. If incremental is off, emits everything up to decodeComplete(). False leaves
    /// neither decoder nor raster, and errorCode() says why.
    [[nodiscard]] virtual bool startDecode(int depth, QSize *outSize, QSize *request);
    /// The raster if there is one, of any depth and size; else the one that startDecode() makes.
    /// Lent: the item keeps it.
    [[nodiscard]] virtual uchar *decodedRaster(int depth, QSize *outSize, QSize *request = nullptr);
    /// The raster, possibly half filled, or null. Lent: the item keeps it.
    [[nodiscard]] virtual uchar *rasterBits();
    /// Deletes decoder and raster. Safe at any time, also in slots of the signals below.
    virtual void releaseDecode();
    /// The decode ends at its next slice, without decodeComplete().
    virtual void abortDecode();

Q_SIGNALS:
    /// At line 0 and every 64th line, and once when a running decode fails (see errorCode()).
    void decodeUpdate();
    /// The last line is in the raster.
    void decodeComplete();

public:
    [[nodiscard]] virtual lumi::DecodeError errorCode() const;
    /// True exactly while decodeComplete() is being emitted, unless a receiver clears it.
    [[nodiscard]] virtual bool inDecodeComplete() const;
    virtual void setInDecodeComplete(bool on);
    /// Passes the raster to the caller. Null if there is none. Ends a running decode.
    [[nodiscard]] virtual std::unique_ptr<uchar[]> takeRaster();
    /// Reads the photo's size again. If the recorded size has other proportions, the photo has been
    /// replaced: fitSize() then uses the photo's own size, and the result is true.
    virtual bool refreshSize();
    /// The photo lines that a screen decode into a raster of this size reads, kSliceLines for each
    /// decodeUpdate().
    [[nodiscard]] virtual int decodedLines(QSize raster) const;

    /// 'l', 's' or 'd': the display mode of the thumbnails, part of their key in the store.
    void setThumbnailKind(char kind) { m_thumbnailKind = kind; }

    [[nodiscard]] char thumbnailKind() const { return m_thumbnailKind; }

protected:
    /// The size that fitSize() uses, from this item or from the store. Empty if neither has one.
    [[nodiscard]] QSize recordedSize();
    /// The second half of refreshSize(). photo is the size just read.
    [[nodiscard]] bool correctRecordedSize(QSize photo);

private:
    char m_thumbnailKind = 'l';
    QSize m_recordedSize{-1, -1};
};

namespace lumi {

/// A pixmap owned by the caller. Null if the image is null or no pixmap can be made of it.
[[nodiscard]] QPixmap *newPixmap(const QImage &image);

} // namespace lumi
