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

/// The low byte means picture, the high byte JPEG.
constexpr int kJpegKind = 0x0101;
constexpr int kSlicePauseMs = 20;
/// About the time of a slice.
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
    image = lumi::Orientation::of(path()).scaled(embedded->toImage(), fitSize(QSize(w, h)));
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
        const lumi::PhotoSize photo = lumi::readPhotoSize(path());
        m_imageSize = photo.size;
        noteError(photo.error);
    }
    return m_imageSize;
}

QImage *FPVItemJpeg::scaledImage(int w, int h)
{
    lumi::DecodedThumbnail thumbnail = lumi::decodeThumbnail(path(), QSize(w, h));
    if (thumbnail.error != DecodeError::None) {
        qWarning("FPVItemJpeg Error (%d)", static_cast<int>(thumbnail.error));
    }
    noteError(thumbnail.error);
    return thumbnail.image.release();
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
    m_scanLine.reset(); // made for the lines of a screen decode, which ends here
    return openSession(&wanted, DecodeFor::Screen);
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
    m_rasterSize = m_orientation.turned(m_session->outputSize());
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

/// Makes a decompressor that is ready for its first line, or reports the failure.
bool FPVItemJpeg::prepareScreenDecode(const QSize *request)
{
    if (request != nullptr && request->isEmpty()) {
        fail(DecodeError::OutOfMemory);
        return false;
    }
    if (!openSession(request, m_incremental ? DecodeFor::ScreenInPieces : DecodeFor::Screen)) {
        fail(DecodeError::Undecodable);
        return false;
    }
    return true;
}

bool FPVItemJpeg::openSession(const QSize *wanted, DecodeFor purpose)
{
    m_session.reset(); // before the next one needs its memory
    lumi::OpenedPhoto photo = lumi::openPhoto(path(), wanted, purpose);
    m_session = std::move(photo.session);
    m_orientation = photo.orientation;
    m_errorCode = photo.error;
    return m_session != nullptr;
}

bool FPVItemJpeg::makeRaster(int depth)
{
    m_raster.reset();
    m_scanLine.reset();
    m_rasterDepth = depth;
    // Memory that was allocated but not yet written does not show in the system's figures.
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

int FPVItemJpeg::decodedLines(QSize raster) const
{
    return m_orientation.turned(raster).height();
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

/// A picture of several scans can be shown only after its file was read. So there are no updates
/// and no pauses, but the event loop runs after each piece.
void FPVItemJpeg::readAhead()
{
    if (m_session->readAhead(kReadAheadMs)) {
        startSliceTimer(0);
        return;
    }
    fail(m_session->outOfMemory() ? DecodeError::OutOfMemory : DecodeError::Undecodable);
    Q_EMIT decodeUpdate();
}

/// True if the last line is in the raster. False if another slice follows, the decode failed or a
/// receiver of a signal ended it. After false the item may have been deleted.
bool FPVItemJpeg::decodeSlice()
{
    const lumi::TurnBlock turn = lumi::turnerFor(m_rasterDepth, m_session->components());
    const auto stride = static_cast<qsizetype>(m_session->lineBytes());
    const QSize stored = m_session->outputSize();
    while (m_session->nextLine() < stored.height()) {
        const int first = m_session->nextLine();
        const int count = std::min(m_blockLines, stored.height() - first);
        if (!m_session->readLines(m_scanLine.get(), stride, count)) {
            fail(DecodeError::Undecodable);
            Q_EMIT decodeUpdate();
            return false;
        }
        turn({m_scanLine.get(), stride, first, count}, stored, m_orientation, m_raster.get());
        if (!sliceGoesOn()) {
            return false;
        }
    }
    return true;
}

/// False if the slice ends here. The item may then have been deleted.
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

/// Thumbnails and sizes requested during a screen decode leave its error code unchanged.
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
