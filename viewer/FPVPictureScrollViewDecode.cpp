// SPDX-License-Identifier: MIT
// The picture of the viewer: what is decoded when, and how large it is drawn.
#include "app/common/messages.h"
#include "items/FPVItemImage.h"
#include "platform/screen/QWSRegionManager.h"
#include "viewer/FPVPictureScrollView.h"
#include "viewer/PictureScrollView.h"
#include "viewer/zoomSteps.h"
#include "views/FPVThumbnailView.h"
#include "widgets/messageBoxes.h"

#include <QProgressBar>

#include <algorithm>

namespace {

/// From the last decoded line to the viewing look. The second is for a decode without pauses.
constexpr int kDecodedMs = 50;
constexpr int kDecodedAtOnceMs = 5;
constexpr int kRegionCheckMs = 1000;
constexpr const char *kForegroundMessage = "appForeground(QString)";

void startOnce(QTimer *timer, int ms)
{
    timer->setSingleShot(true);
    timer->start(ms);
}

/// The toolkit replaces "[*]" in a title by the mark of a changed document.
QString asTitle(QString name)
{
    return name.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

} // namespace

bool FPVPictureScrollView::setPicture(FPVItemImage *item, bool isFirst)
{
    if (!isFirst) {
        leavePicture();
    }
    if (item == nullptr) {
        return false;
    }
    m_item = item;
    connect(item, &FPVItemImage::decodeUpdate, this, &FPVPictureScrollView::updateProgress);
    connect(item, &FPVItemImage::decodeComplete, this, &FPVPictureScrollView::updatePixmap);
    connect(item, &QObject::destroyed, this, &FPVPictureScrollView::forgetRaster);
    m_regionTimer.stop();
    m_photoSize = item->imageSize();
    setWindowTitle(asTitle(item->fileName()));
    m_scrollOrigin = QPoint();
    m_firstDraw = true;
    forgetRaster();
    QSize wanted = m_scrollView->viewport()->size();
    if (!item->startDecode(m_depth, &m_rasterSize, &wanted) || !m_item) {
        return false;
    }
    m_photoSize = lumi::zoomBase(m_item->imageSize());
    startProgress();
    m_decodedPercent = m_zoomPercent;
    setZoomButtonsEnabled(false);
    if (setFitPercent()) {
        m_decodedPercent = m_zoomPercent;
    }
    finishStart();
    updateLabels();
    return true;
}

void FPVPictureScrollView::leavePicture()
{
    forgetRaster();
    if (m_item) {
        m_item->disconnect(this);
        m_item->releaseDecode();
    }
    m_item = nullptr;
}

void FPVPictureScrollView::forgetRaster()
{
    m_scrollView->setRaster(&m_scrollOrigin, nullptr, QSize(), 0);
}

void FPVPictureScrollView::decodeFullSize()
{
    if (!m_item) {
        return;
    }
    if (!isDecodingLook()) {
        setDecodingLook(true);
    }
    m_regionTimer.stop();
    m_decodedPercent = lumi::kFullSize;
    forgetRaster();
    m_item->releaseDecode();
    m_firstDraw = true;
    if (!m_item->startDecode(m_depth, &m_rasterSize, nullptr) || !m_item) {
        failAndClose();
        return;
    }
    startProgress();
    finishStart();
    updateLabels();
}

/// The update that startDecode() itself emits is not counted.
void FPVPictureScrollView::startProgress()
{
    m_progress = 0;
    m_progressTotal = m_item->decodedLines(m_rasterSize);
    m_progressBar->setMaximum(m_progressTotal);
    m_progressBar->setValue(0);
}

/// A decode without pauses has completed before startDecode() returned.
void FPVPictureScrollView::finishStart()
{
    if (!m_firstDraw) {
        updatePixmap();
        startOnce(&m_regionTimer, kDecodedAtOnceMs);
    }
    m_firstDraw = false;
}

void FPVPictureScrollView::updateProgress()
{
    if (!m_item) {
        return;
    }
    if (m_item->errorCode() != lumi::DecodeError::None) {
        failAndClose();
        return;
    }
    m_progress += lumi::kSliceLines;
    m_progressBar->setValue(qMin(m_progress, m_progressTotal));
    m_progressBar->repaint();
}

void FPVPictureScrollView::updatePixmap()
{
    if (m_firstDraw) {
        m_firstDraw = false;
        return;
    }
    if (!m_item) {
        return;
    }
    if (const uchar *raster = m_item->decodedRaster(m_depth, &m_rasterSize)) {
        m_scrollView->setRaster(&m_scrollOrigin, raster, m_rasterSize, drawnPercent());
    }
    if (isDecodingLook()) {
        m_progressBar->setValue(m_progressTotal);
        startOnce(&m_regionTimer, kDecodedMs);
    }
}

void FPVPictureScrollView::checkRegion()
{
    if (!qt_fbdpy->regionManager()->region(this).isEmpty()) {
        updatePixmap();
    }
    if (!isDecodingLook()) {
        setZoomButtonsEnabled(true);
        return;
    }
    setDecodingLook(false);
    m_regionTimer.setSingleShot(false);
    m_regionTimer.start(kRegionCheckMs);
}

bool FPVPictureScrollView::setFitPercent()
{
    const auto fit = lumi::fitPercent(m_scrollView->viewport()->size(), m_photoSize);
    m_zoomPercent = fit.value_or(m_zoomPercent);
    m_isFitted = true;
    return fit.has_value();
}

int FPVPictureScrollView::drawnPercent() const
{
    return lumi::effectivePercent(m_zoomPercent, m_photoSize, m_rasterSize);
}

void FPVPictureScrollView::zoomIn()
{
    if (m_zoomPercent >= lumi::kGreatestZoom) {
        return;
    }
    m_zoomPercent = lumi::zoomStepAbove(m_zoomPercent);
    m_isFitted = false;
    if (m_decodedPercent < lumi::kFullSize) {
        decodeFullSize();
    } else {
        redrawPicture();
    }
}

void FPVPictureScrollView::zoomOut()
{
    if (m_zoomPercent <= lumi::kLeastZoom) {
        return;
    }
    m_zoomPercent = lumi::zoomStepBelow(m_zoomPercent);
    m_isFitted = false;
    redrawPicture();
}

void FPVPictureScrollView::fix()
{
    if (!m_rasterSize.isEmpty() && setFitPercent()) {
        redrawPicture();
    }
}

/// A raster that was decoded for a smaller window has too few pixels for this one.
void FPVPictureScrollView::refit()
{
    if (!m_item || !m_isFitted) {
        return;
    }
    const auto fit = lumi::fitPercent(m_scrollView->viewport()->size(), m_photoSize);
    const bool isTooSmall = m_decodedPercent < lumi::kFullSize && fit > m_decodedPercent;
    if (isTooSmall || isDecodingLook()) {
        showOther(m_item);
    } else {
        fix();
    }
}

void FPVPictureScrollView::redrawPicture()
{
    if (m_item && m_item->rasterBits() != nullptr) {
        updateLabels();
        m_scrollView->setPercent(drawnPercent());
    }
}

/// The width of the empty area to the left of the picture, and the height of that above it.
QSize FPVPictureScrollView::drawnMargin() const
{
    const QSize drawn = m_rasterSize * drawnPercent() / lumi::kFullSize;
    return ((m_scrollView->viewport()->size() - drawn) / 2).expandedTo(QSize(0, 0));
}

/// Does nothing during a decode. The buttons for the same steps are hidden then, too.
void FPVPictureScrollView::swipe(bool isToNext)
{
    if (isDecodingLook()) {
        return;
    }
    if (isToNext) {
        btn_next_cliced();
    } else {
        btn_prev_cliced();
    }
}

/// The pixel at this point of the viewport stays there as far as the edges of the picture allow it.
void FPVPictureScrollView::zoomAround(QPoint centre, bool isIn)
{
    if (isDecodingLook() || m_rasterSize.isEmpty()) {
        return;
    }
    const auto fromEdge = [this, centre] {
        const QSize margin = drawnMargin();
        return QPointF(centre.x() - margin.width(), centre.y() - margin.height()) * lumi::kFullSize
            / drawnPercent();
    };
    const QPointF pixel = fromEdge() + m_scrollOrigin;
    const QSizeF before = m_rasterSize;
    if (isIn) {
        zoomIn();
    } else {
        zoomOut();
    }
    // Zooming in may have started a decode to another size.
    const QPointF target(pixel.x() * m_rasterSize.width() / before.width(),
                         pixel.y() * m_rasterSize.height() / before.height());
    const QPoint origin = (target - fromEdge()).toPoint();
    m_scrollOrigin = QPoint(std::max(0, origin.x()), std::max(0, origin.y()));
    m_scrollView->redraw();
}

void FPVPictureScrollView::btn_prev_cliced() // sic
{
    showOther(m_view ? m_view->prevPicture() : nullptr);
}

void FPVPictureScrollView::btn_next_cliced() // sic
{
    showOther(m_view ? m_view->nextPicture() : nullptr);
}

void FPVPictureScrollView::showOther(FPVItemObject *object)
{
    auto *item = qobject_cast<FPVItemImage *>(object);
    if (item == nullptr) {
        hide();
        return;
    }
    if (!isDecodingLook()) {
        setDecodingLook(true);
    }
    showSize(item->imageSize());
    if (!setPicture(item, false)) {
        failAndClose();
    }
}

/// Once per window: after one failure others often follow.
void FPVPictureScrollView::tellFailure()
{
    if (m_failureTold) {
        return;
    }
    m_failureTold = true;
    m_regionTimer.stop();
    const bool isMemory = m_item && m_item->errorCode() == lumi::DecodeError::OutOfMemory;
    lumi::tellError(nullptr, msg(isMemory ? lumi::MsgMemoryFullCancelled : lumi::MsgDidNotOpen));
}

void FPVPictureScrollView::failAndClose()
{
    tellFailure();
    hide();
}

void FPVPictureScrollView::memFull()
{
    hide();
}

void FPVPictureScrollView::systemChannel(const QCString &message, const QByteArray & /*data*/)
{
    if (message != kForegroundMessage) {
        return;
    }
    // Nothing may be drawn over the program that is now in front.
    if (m_item) {
        m_item->abortDecode();
        disconnect(m_item, &FPVItemImage::decodeUpdate, this, nullptr);
        disconnect(m_item, &FPVItemImage::decodeComplete, this, nullptr);
    }
    hide();
}
