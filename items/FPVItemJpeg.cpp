// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"

#include "app/common/memory.h"
#include "exif/tag/FPVExifTag.h"
#include "exif/tag/tagNumbers.h"
#include "exif/text/exifInfoGroups.h"
#include "items/JpegSession.h"
#include "items/exifRecords.h"
#include "items/openPhoto.h"
#include "items/photoScale.h"
#include "items/rasterMemory.h"
#include "items/rasterRows.h"
#include "items/thumbnailDecode.h"
#include "swap/swapStore.h"

#include <QFileInfo>
#include <QImage>
#include <QPixmap>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <new>

using lumi::DecodeError;
using lumi::DecodeFor;

namespace {

/// The low byte says picture, the high one JPEG.
constexpr int kJpegKind = 0x0101;
constexpr int kSlicePauseMs = 20;
/// About what a slice takes.
constexpr int kReadAheadMs = 10;

static_assert(lumi::kSliceLines % lumi::kBlockLines == 0, "no block may straddle two slices");

} // namespace

FPVItemJpeg::FPVItemJpeg(const QString &path, const QString &displayName, bool checked)
    : FPVItemImage(path, displayName, checked)
    , m_exif(path)
{ }

FPVItemJpeg::~FPVItemJpeg() = default;

int FPVItemJpeg::itemKind() const
{
    return kJpegKind;
}

QPixmap *FPVItemJpeg::thumbnail(int w, int h)
{
    QImage image;
    if (SwapLoad(path(), &image, w, thumbnailKind())) {
        return lumi::newPixmap(image);
    }
    const std::unique_ptr<QPixmap> embedded(m_exif.thumbnailPixmap());
    if (!embedded) {
        return FPVItemImage::thumbnail(w, h);
    }
    image = embedded->toImage().scaled(fitSize(QSize(w, h)), Qt::IgnoreAspectRatio,
                                       Qt::SmoothTransformation);
    SwapAppend(path(), &image, w, thumbnailKind());
    return lumi::newPixmap(image);
}

QList<lumi::InfoRecord> *FPVItemJpeg::infoList()
{
    const QSize size = imageSize();
    const FPVExifTag *dateTime = m_exif.findTag(lumi::kTagDateTimeOriginal);
    const QString basic = QStringLiteral("File Size : ")
        + QString::number(QFileInfo(path()).size() >> 10) + QStringLiteral("KB\nImage Size : ")
        + QString::number(size.width()) + QLatin1Char('x') + QString::number(size.height())
        + QStringLiteral("\nDate Time : ") + (dateTime != nullptr ? dateTime->text() : QString())
        + QLatin1Char('\n');
    auto *list = new QList<lumi::InfoRecord>;
    list->append({QLatin1String(lumi::kExifInfoGroups.front().title), basic});
    lumi::appendExifRecords(m_exif.tags(), list);
    return list;
}

void FPVItemJpeg::setIncremental(bool incremental)
{
    m_incremental = incremental;
}

QSize FPVItemJpeg::imageSize()
{
    if (m_imageSize.isEmpty()) {
        DecodeError error = DecodeError::None;
        m_imageSize = lumi::readPhotoSize(path(), &error);
        noteError(error);
    }
    return m_imageSize;
}

QImage *FPVItemJpeg::scaledImage(int w, int h)
{
    DecodeError error = DecodeError::None;
    QImage *image = lumi::decodeThumbnail(path(), QSize(w, h), &error);
    if (error != DecodeError::None) {
        qWarning("FPVItemJpeg Error (%d)", static_cast<int>(error));
    }
    noteError(error);
    return image;
}

QPixmap *FPVItemJpeg::scaledPixmap(int w, int h)
{
    QImage stored;
    if (SwapLoad(path(), &stored, w, thumbnailKind())) {
        return lumi::newPixmap(stored);
    }
    QSize size(w, h);
    if (!recordedSize().isEmpty() && refreshSize()) {
        size = lumi::fittedSize(recordedSize(), size);
    }
    const std::unique_ptr<QImage> image(scaledImage(size.width(), size.height()));
    if (!image) {
        return nullptr;
    }
    SwapAppend(path(), image.get(), size.width(), thumbnailKind());
    return lumi::newPixmap(*image);
}

bool FPVItemJpeg::refreshSize()
{
    m_imageSize = QSize(-1, -1);
    return correctRecordedSize(imageSize());
}

bool FPVItemJpeg::InitJpegLib(int w, int h)
{
    const QSize wanted(w, h);
    m_session.reset();
    m_scanLine.reset(); // made for the lines of a screen decode, which ends here
    m_errorCode = DecodeError::None;
    m_session = lumi::openPhoto(path(), &wanted, DecodeFor::Screen, &m_errorCode);
    return m_session != nullptr;
}

bool FPVItemJpeg::startDecode(int depth, QSize *outSize, QSize *request)
{
    m_abortRequested = false;
    if (depth != 16 && depth != 32) {
        fail(DecodeError::WrongDepth);
        return false;
    }
    if (!prepareScreenDecode(request)) {
        return false;
    }
    m_rasterSize = m_session->outputSize();
    if (outSize != nullptr) {
        *outSize = m_rasterSize;
    }
    if (!makeRaster(depth)) {
        fail(DecodeError::OutOfMemory);
        return false;
    }
    if (m_incremental) {
        (void)sliceGoesOn();
        return true;
    }
    const bool whole = decodeSlice();
    if (whole) {
        finishScreenDecode();
    }
    return whole;
}

/// Leaves a decompressor that stands before its first line, or has reported why there is none.
bool FPVItemJpeg::prepareScreenDecode(const QSize *request)
{
    m_session.reset();
    if (request != nullptr && request->isEmpty()) {
        fail(DecodeError::OutOfMemory);
        return false;
    }
    m_errorCode = DecodeError::None;
    m_session = lumi::openPhoto(path(), request,
                                m_incremental ? DecodeFor::ScreenInPieces : DecodeFor::Screen,
                                &m_errorCode);
    if (!m_session) {
        fail(DecodeError::Undecodable);
        return false;
    }
    return true;
}

bool FPVItemJpeg::makeRaster(int depth)
{
    m_raster.reset();
    m_scanLine.reset();
    m_rasterDepth = depth;
    // What is held but not yet read into doesn't show in the system's figures.
    const qint64 heldKB = m_session->isReady() ? 0 : m_session->heldKB();
    const qint64 needKB
        = heldKB + lumi::screenNeedKB(m_session->imageSize().width(), m_rasterSize, depth);
    if (needKB > freeMemoryKB()) {
        return false;
    }
    const auto pixels = static_cast<std::size_t>(m_rasterSize.width())
        * static_cast<std::size_t>(m_rasterSize.height());
    m_raster = lumi::newRaster(pixels * static_cast<std::size_t>(depth >> 3));
    const std::size_t lineBytes = m_session->lineBytes();
    m_blockLines = lumi::heldLines(static_cast<qint64>(lineBytes), lumi::kBlockLines);
    m_scanLine.reset(new (std::nothrow) uchar[lineBytes * static_cast<std::size_t>(m_blockLines)]);
    if (!m_raster || !m_scanLine) {
        return false;
    }
    lumi::fillBlack(m_raster.get(), static_cast<qsizetype>(pixels), depth);
    return true;
}

uchar *FPVItemJpeg::decodedRaster(int depth, QSize *outSize, QSize *request)
{
    if (!m_raster) {
        const QPointer<FPVItemJpeg> self(this);
        const bool ok = startDecode(depth, outSize, request);
        return ok && self ? m_raster.get() : nullptr;
    }
    if (outSize != nullptr) {
        *outSize = m_rasterSize;
    }
    return m_raster.get();
}

uchar *FPVItemJpeg::rasterBits()
{
    return m_raster.get();
}

void FPVItemJpeg::decodeScreenImage()
{
    if (!m_session || !m_raster || !m_scanLine) {
        return;
    }
    if (!m_abortRequested && !m_session->isReady()) {
        readAhead();
    } else if (m_abortRequested || decodeSlice()) {
        finishScreenDecode();
    }
}

/// Nobody sees a picture of several scans before its file is read, so nothing is told meanwhile
/// and there are no pauses; but events are answered after each piece.
void FPVItemJpeg::readAhead()
{
    if (m_session->readAhead(kReadAheadMs)) {
        startSliceTimer(0);
        return;
    }
    fail(m_session->outOfMemory() ? DecodeError::OutOfMemory : DecodeError::Undecodable);
    Q_EMIT decodeUpdate();
}

/// True when the last line is in the raster, false when the next slice goes on, the decode
/// failed or a receiver of a signal ended it. After false the item may be gone.
bool FPVItemJpeg::decodeSlice()
{
    const lumi::TurnBlock turn = lumi::turnerFor(m_rasterDepth, m_session->components());
    const auto stride = static_cast<qsizetype>(m_session->lineBytes());
    const int height = m_rasterSize.height();
    while (m_session->nextLine() < height) {
        const int first = m_session->nextLine();
        const int count = std::min(m_blockLines, height - first);
        if (!m_session->readLines(m_scanLine.get(), stride, count)) {
            fail(DecodeError::Undecodable);
            Q_EMIT decodeUpdate();
            return false;
        }
        turn({m_scanLine.get(), stride, first, count}, m_rasterSize.width(), height,
             m_raster.get());
        if (!sliceGoesOn()) {
            return false;
        }
    }
    return true;
}

/// False when the slice ends here; the item may be gone then.
bool FPVItemJpeg::sliceGoesOn()
{
    if (!m_session) {
        return false;
    }
    if (!m_incremental || m_session->nextLine() % lumi::kSliceLines != 0) {
        return true;
    }
    const QPointer<FPVItemJpeg> self(this);
    Q_EMIT decodeUpdate();
    if (self) {
        startSliceTimer(kSlicePauseMs);
    }
    return false;
}

void FPVItemJpeg::startSliceTimer(int pauseMs)
{
    if (m_decodeTimer == nullptr) {
        m_decodeTimer = new QTimer(this);
        m_decodeTimer->setSingleShot(true);
        connect(m_decodeTimer, &QTimer::timeout, this, &FPVItemJpeg::decodeScreenImage);
    }
    m_decodeTimer->start(pauseMs);
}

void FPVItemJpeg::finishScreenDecode()
{
    m_scanLine.reset();
    m_session.reset();
    if (m_abortRequested) {
        return;
    }
    const QPointer<FPVItemJpeg> self(this);
    m_inDecodeComplete = true;
    Q_EMIT decodeComplete();
    if (self) {
        m_inDecodeComplete = false;
    }
}

void FPVItemJpeg::releaseDecode()
{
    m_session.reset();
    m_scanLine.reset();
    m_raster.reset();
}

void FPVItemJpeg::abortDecode()
{
    m_abortRequested = true;
}

std::unique_ptr<uchar[]> FPVItemJpeg::takeRaster()
{
    std::unique_ptr<uchar[]> raster = std::move(m_raster);
    releaseDecode();
    return raster;
}

/// The first cause stays.
void FPVItemJpeg::fail(DecodeError error)
{
    if (m_errorCode == DecodeError::None) {
        m_errorCode = error;
    }
    qWarning("FPVItemJpeg Error (%d)", static_cast<int>(m_errorCode));
    releaseDecode();
}

/// A thumbnail or a size asked for while the screen decode runs does not touch its code.
void FPVItemJpeg::noteError(DecodeError error)
{
    if (!m_session) {
        m_errorCode = error;
    }
}

DecodeError FPVItemJpeg::errorCode() const
{
    return m_errorCode;
}

bool FPVItemJpeg::inDecodeComplete() const
{
    return m_inDecodeComplete;
}

void FPVItemJpeg::setInDecodeComplete(bool on)
{
    m_inDecodeComplete = on;
}
