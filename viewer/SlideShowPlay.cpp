// SPDX-License-Identifier: MIT
// The cycle of decoding, waiting and drawing.
#include "platform/screen/QDirectPainter.h"
#include "viewer/SlideMenu.h"
#include "viewer/SlideShow.h"
#include "viewer/slideOrder.h"

#include <QFile>
#include <QMessageBox>
#include <QScopedValueRollback>

#include <algorithm>

using lumi::DecodeError;
using lumi::SlideRaster;
using lumi::SlideSign;

namespace {

/// From a file that is gone, or a failure with nothing to look at, to what comes next.
constexpr int kSkipMs = 10;

} // namespace

FPVItemImage *SlideShow::currentPicture() const
{
    return qobject_cast<FPVItemImage *>(m_playList.current());
}

bool SlideShow::isInterrupted() const
{
    return m_menu || m_box;
}

bool SlideShow::isStepPending() const
{
    return m_prevStep.has_value();
}

/// A picture is decoded and was not drawn yet.
bool SlideShow::isReady() const
{
    return m_decodeDone && m_nextRaster && m_nextRaster != m_curRaster;
}

bool SlideShow::roundsAreOver() const
{
    return m_autoMode && m_loopCount != 0 && m_loopsDone >= m_loopCount;
}

void SlideShow::startPicture(FPVItemImage *item)
{
    m_screenOutTimer.stop();
    m_playBackTimer.stop();
    leaveDecoding();
    m_decodingItem = item;
    if (item == nullptr) {
        if (m_autoMode) {
            m_paused = false;
            m_slideTimer.start(m_delay);
        }
        return;
    }
    if (!QFile::exists(item->path())) {
        skipMissing(item);
        return;
    }
    connect(item, &FPVItemImage::decodeComplete, this, &SlideShow::decodeComplete);
    connect(item, &FPVItemImage::decodeUpdate, this, &SlideShow::watchDecode);
    m_decodeTimer.start();
    QSize request = m_screenSize;
    if (!item->startDecode(m_depth, nullptr, &request)) {
        noteFailure();
    }
}

/// What is being decoded will not be drawn.
void SlideShow::leaveDecoding()
{
    if (m_decodingItem) {
        m_decodingItem->disconnect(this);
        m_decodingItem->releaseDecode();
    }
    m_decodeDone = false;
}

/// A decode that fails after its start tells of it by an update.
void SlideShow::watchDecode()
{
    if (m_decodingItem && m_decodingItem->errorCode() != DecodeError::None) {
        noteFailure();
    }
}

/// The picture on the screen keeps its time.
void SlideShow::noteFailure()
{
    m_failed = true;
    const bool somebodyLooks = m_autoMode && m_curRaster && !isStepPending();
    m_redrawTimer.start(somebodyLooks ? m_delay : kSkipMs);
}

void SlideShow::skipMissing(FPVItemImage *item)
{
    const bool wasLast = dropPicture(item);
    if (m_playList.isEmpty()) {
        end(ToBrowser);
        return;
    }
    if (wasLast) {
        startNewRound();
    }
    if (!m_startItem || isStepPending()) {
        countStepsFromPresent(); // a step that led to the lost file is done
    }
    m_slideTimer.start(kSkipMs);
}

/// Takes a picture out of both lists, and a failure to decode it with it; the play list then
/// stands on its follower. True if it was the last one of a round.
bool SlideShow::dropPicture(FPVItemImage *item)
{
    m_failed = m_failed && m_decodingItem != item;
    for (QPointer<FPVItemImage> *pointer : {&m_decodingItem, &m_shownItem, &m_startItem}) {
        if (*pointer == item) {
            pointer->clear();
        }
    }
    const int place = m_playList.findRef(item);
    const bool wasLast = place == m_playList.count() - 1;
    m_playList.remove(place);
    m_sourceList->remove(m_sourceList->findRef(item)); // deletes it
    return wasLast;
}

void SlideShow::startNewRound()
{
    m_playList.first();
    ++m_loopsDone;
    m_aheadInNewRound = true;
}

/// What steps are counted from is gone: the play list's present picture takes its place.
void SlideShow::countStepsFromPresent()
{
    m_startItem = currentPicture();
    m_step = 0;
    m_aheadInNewRound = false;
}

void SlideShow::slot_timeout()
{
    if (m_ended || m_failed || isInterrupted()) {
        return;
    }
    if (!m_decodingItem) {
        playPresent();
        return;
    }
    // A picture that is still being decoded comes as soon as it is ready.
    m_paused = false;
    if (m_decodeDone) {
        ScreenOut();
    }
}

/// After a loss: the follower of what is gone.
void SlideShow::playPresent()
{
    m_paused = m_autoMode && m_curRaster && !isStepPending();
    if (m_paused) {
        m_slideTimer.start(m_delay);
    }
    startPicture(currentPicture());
}

void SlideShow::decodeComplete()
{
    const QPointer<FPVItemImage> item = m_decodingItem;
    if (!item || !item->inDecodeComplete()) {
        return;
    }
    item->setInDecodeComplete(false);
    const auto raster = std::make_shared<SlideRaster>();
    if (item->rasterBits() == nullptr
        || item->decodedRaster(m_depth, &raster->size, nullptr) == nullptr) {
        return;
    }
    raster->bits = item->takeRaster();
    raster->item = item;
    m_nextRaster = raster;
    m_decodeDone = true;
    const bool waits = m_paused && !isStepPending();
    m_paused = false;
    if (!waits) {
        ScreenOut();
    }
}

void SlideShow::ScreenOut()
{
    m_screenOutTimer.stop();
    if (m_ended || m_failed || isInterrupted()) {
        return;
    }
    m_overlay = SlideSign::None;
    m_step = 0;
    m_prevStep.reset();
    m_startItem = m_decodingItem;
    m_loopsDone = std::max(0, m_loopsDone);
    const QScopedValueRollback<bool> drawing(m_drawing, true);
    drawNext();
}

void SlideShow::ScreenOutRedraw()
{
    m_redrawTimer.stop();
    if (m_ended || isInterrupted()) {
        return;
    }
    if (m_failed) {
        reportFailure();
        return;
    }
    const QScopedValueRollback<bool> drawing(m_drawing, true);
    drawRaster();
}

void SlideShow::ScreenOutPlayBack()
{
    m_playBackTimer.stop();
    if (m_ended || m_failed || isInterrupted()) {
        return;
    }
    const QScopedValueRollback<bool> drawing(m_drawing, true);
    if (!m_prevRaster) {
        drawRaster();
        return;
    }
    m_overlay = SlideSign::None;
    m_step = 0;
    m_prevStep.reset();
    m_curRaster = std::move(m_prevRaster);
    m_prevRaster.reset();
    m_nextRaster = m_curRaster;
    m_shownItem = m_curRaster->item;
    m_startItem = m_shownItem;
    drawRaster();
    leaveDecoding();
    m_decodingItem = m_shownItem;
    m_decodeDone = true;
    if (m_autoMode) {
        m_decodeTimer.start();
        playOn();
    }
}

/// The next picture comes on the screen; in an automatic show the one after it is begun.
void SlideShow::drawNext()
{
    if (!m_nextRaster) {
        return;
    }
    if (roundsAreOver()) {
        end(ToBrowser);
        return;
    }
    m_prevRaster = m_curRaster;
    m_curRaster = m_nextRaster;
    m_shownItem = m_curRaster->item;
    drawRaster();
    if (m_autoMode) {
        playOn();
    }
}

void SlideShow::drawRaster()
{
    if (!m_curRaster) {
        return;
    }
    QDirectPainter painter(this);
    uchar *bits = painter.frameBuffer();
    if (bits != nullptr && painter.depth() == m_depth) {
        lumi::drawSlide({bits, painter.lineStep(), m_depth, m_screenSize},
                        {m_curRaster->bits.get(), m_curRaster->size}, m_overlay);
    }
}

void SlideShow::playOn()
{
    m_slideTimer.start(lumi::slideWait(m_delay, m_decodeTimer.elapsed()));
    m_paused = true;
    nextInList();
}

void SlideShow::nextInList()
{
    m_aheadInNewRound = false;
    if (m_playList.next() == nullptr) {
        startNewRound();
    }
    startPicture(currentPicture());
}
