// SPDX-License-Identifier: MIT
// A JPEG photo. Thumbnails come from the cheapest source: the swap store, the embedded thumbnail or
// a decode at reduced scale. For the screen the photo is decoded in slices of 64 lines with pauses
// of 20 ms for the event loop. A photo of several scans is first read in pieces.
// A folder may have thousands of items, so idle items are small: timer, decoder and raster are made
// by startDecode(). Free memory is checked before each large allocation.
// Owns: decoder, raster and line buffer of its screen decode.
#pragma once

#include "exif/read/FPVExifInfo.h"
#include "items/FPVItemImage.h"
#include "items/Orientation.h"

#include <memory>

class QTimer;

namespace lumi {
class JpegSession;
enum class DecodeFor;
} // namespace lumi

class FPVItemJpeg : public FPVItemImage
{
    Q_OBJECT

public:
    FPVItemJpeg(const QString &path, const QString &displayName, bool checked);
    ~FPVItemJpeg() override;

    [[nodiscard]] int itemKind() const override;
    [[nodiscard]] QPixmap *thumbnail(int w, int h) override;
    [[nodiscard]] QList<lumi::InfoRecord> *infoList() override;
    void setIncremental(bool incremental) override;
    [[nodiscard]] QSize imageSize() override;
    [[nodiscard]] QImage *scaledImage(int w, int h) override;
    [[nodiscard]] QPixmap *scaledPixmap(int w, int h) override;
    [[nodiscard]] bool startDecode(int depth, QSize *outSize, QSize *request) override;
    [[nodiscard]] uchar *decodedRaster(int depth, QSize *outSize,
                                       QSize *request = nullptr) override;
    [[nodiscard]] uchar *rasterBits() override;
    void releaseDecode() override;
    void abortDecode() override;
    [[nodiscard]] lumi::DecodeError errorCode() const override;
    [[nodiscard]] bool inDecodeComplete() const override;
    void setInDecodeComplete(bool on) override;
    [[nodiscard]] std::unique_ptr<uchar[]> takeRaster() override;
    bool refreshSize() override;
    [[nodiscard]] int decodedLines(QSize raster) const override;

    /// Opens the photo and prepares the item's decompressor at the smallest scale that covers
    /// w x h. A side of 0 means no scaling. False leaves no decompressor.
    [[nodiscard]] bool
    InitJpegLib(int w, int h); // NOLINT(readability-identifier-naming): part of the interface

public Q_SLOTS:
    void decodeScreenImage();

private:
    [[nodiscard]] bool prepareScreenDecode(const QSize *request);
    [[nodiscard]] bool openSession(const QSize *wanted, lumi::DecodeFor purpose);
    [[nodiscard]] bool makeRaster(int depth);
    [[nodiscard]] bool decodeSlice();
    [[nodiscard]] bool sliceGoesOn();
    void readAhead();
    void startSliceTimer(int pauseMs);
    void finishScreenDecode();
    void fail(lumi::DecodeError error);
    void noteError(lumi::DecodeError error);

    FPVExifInfo m_exif;
    QSize m_imageSize{-1, -1};
    std::unique_ptr<uchar[]> m_raster;
    std::unique_ptr<uchar[]> m_scanLine; ///< room for m_blockLines lines
    QSize m_rasterSize{-1, -1};
    lumi::Orientation m_orientation; ///< of the screen decode
    int m_rasterDepth = 0;
    QTimer *m_decodeTimer = nullptr;
    bool m_incremental = true;
    bool m_abortRequested = false;
    lumi::DecodeError m_errorCode = lumi::DecodeError::None;
    std::unique_ptr<lumi::JpegSession> m_session;
    bool m_inDecodeComplete = false;
    int m_blockLines = 0;
};
