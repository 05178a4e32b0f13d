// SPDX-License-Identifier: MIT
// Decoding, waiting and drawing, and the steps of the user.
#include "viewer/SlideMenu.h"
#include "viewer/SlideShow.h"
#include "viewer/slideWait.h"

#include <QFile>
#include <QMessageBox>
#include <QScopedValueRollback>

using lumi::DecodeError;
using lumi::SlideRaster;
using lumi::SlideSign;

namespace {

/// The delay after a missing file, or after a failure if no picture is being shown for its time.
constexpr int kSkipMs = 10;
/// The wait before the previous picture is shown, whose raster was kept.
constexpr int kPlayBackMs = 1;

} // namespace

bool SlideShow::isInterrupted() const
{
    return m_menu != nullptr || m_box != nullptr;
}

/// Nothing may be drawn.
bool SlideShow::isHeld() const
{
    return m_ended || m_failed || isInterrupted();
}

/// A picture has been shown and is to keep its time: the user did not ask for another one.
bool SlideShow::isDelayRunning() const
{
    return m_autoMode && m_screen.hasPresent() && !m_cycle.isStepPending();
}

/// A picture is decoded and was not drawn yet.
bool SlideShow::isReady() const
{
    return m_decodeDone && m_screen.isNextNew();
}

void SlideShow::startPicture(FPVItemImage *item)
{
    m_screenOutTimer.stop();
    m_playBackTimer.stop();
    leaveDecoding();
    m_decodingItem = item;
    if (!QFile::exists(item->path())) {
        skipMissing(item);
        return;
    }
    connect(item, &FPVItemImage::decodeComplete, this, &SlideShow::decodeComplete);
    connect(item, &FPVItemImage::decodeUpdate, this, &SlideShow::watchDecode);
    m_decodeTimer.start();
    QSize request = m_screen.size();
    if (!item->startDecode(m_screen.depth(), nullptr, &request)) {
        noteFailure();
    }
}

/// Ends the decode under way, whose picture is then not drawn.
void SlideShow::leaveDecoding()
{
    if (m_decodingItem) {
        m_decodingItem->disconnect(this);
        m_decodingItem->releaseDecode();
    }
    m_decodeDone = false;
}

/// A decode that fails after its start emits an update.
void SlideShow::watchDecode()
{
    if (m_decodingItem && m_decodingItem->errorCode() != DecodeError::None) {
        noteFailure();
    }
}

/// A picture on the screen keeps its time.
void SlideShow::noteFailure()
{
    m_failed = true;
    m_redrawTimer.start(isDelayRunning() ? m_delay : kSkipMs);
}

void SlideShow::skipMissing(FPVItemImage *item)
{
    dropPicture(item);
    if (m_cycle.isEmpty()) {
        end(ToBrowser);
        return;
    }
    m_cycle.repairSteps();
    m_slideTimer.start(kSkipMs);
}

/// Takes a picture out of both lists. If it could not be decoded, that failure is forgotten.
void SlideShow::dropPicture(FPVItemImage *item)
{
    m_failed = m_failed && m_decodingItem != item;
    for (QPointer<FPVItemImage> *pointer : {&m_decodingItem, &m_shownItem}) {
        if (*pointer == item) {
            pointer->clear();
        }
    }
    m_cycle.remove(item, m_decodingItem);
    m_sourceList->remove(m_sourceList->findRef(item)); // deletes it
}

void SlideShow::slot_timeout()
{
    if (isHeld()) {
        return;
    }
    if (!m_decodingItem) {
        playPresent();
        return;
    }
    // A picture that is still being decoded is drawn by decodeComplete().
    m_paused = false;
    if (m_decodeDone) {
        ScreenOut();
    }
}

/// After a picture was dropped: its follower.
void SlideShow::playPresent()
{
    m_paused = isDelayRunning();
    if (m_paused) {
        m_slideTimer.start(m_delay);
    }
    startPicture(m_cycle.present());
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
        || item->decodedRaster(m_screen.depth(), &raster->size, nullptr) == nullptr) {
        return;
    }
    raster->bits = item->takeRaster();
    raster->item = item;
    m_screen.setNext(raster);
    m_decodeDone = true;
    const bool waits = m_paused && !m_cycle.isStepPending();
    m_paused = false;
    if (!waits) {
        ScreenOut();
    }
}

void SlideShow::ScreenOut()
{
    m_screenOutTimer.stop();
    if (isHeld()) {
        return;
    }
    m_cycle.setShown(m_decodingItem);
    if (!m_screen.hasNext()) {
        return;
    }
    if (m_cycle.roundsAreOver()) {
        end(ToBrowser);
        return;
    }
    const QScopedValueRollback<bool> drawing(m_drawing, true);
    m_shownItem = m_screen.showNext();
    if (m_autoMode) {
        playOn();
    }
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
    m_screen.redraw();
}

void SlideShow::ScreenOutPlayBack()
{
    m_playBackTimer.stop();
    if (isHeld()) {
        return;
    }
    if (!m_screen.hasPrevious()) {
        m_screen.redraw();
        return;
    }
    const QScopedValueRollback<bool> drawing(m_drawing, true);
    m_shownItem = m_screen.showPrevious();
    m_cycle.setShownAgain(m_shownItem);
    leaveDecoding();
    m_decodingItem = m_shownItem;
    m_decodeDone = true;
    if (m_autoMode) {
        m_decodeTimer.start();
        playOn();
    }
}

/// Begins the picture after the one that was just drawn.
void SlideShow::playOn()
{
    m_slideTimer.start(lumi::slideWait(m_delay, m_decodeTimer.elapsed()));
    m_paused = true;
    m_cycle.goOn();
    startPicture(m_cycle.present());
}

void SlideShow::userNext()
{
    step(SlideSign::Next);
}

void SlideShow::userPrevious()
{
    step(SlideSign::Previous);
}

void SlideShow::step(SlideSign sign)
{
    if (isHeld() || m_cycle.isEmpty()) {
        return;
    }
    if (m_cycle.roundsAreOver()) {
        end(ToBrowser);
        return;
    }
    if (m_screen.sign() != SlideSign::None) {
        m_screen.forgetSign();
        ScreenOutRedraw();
    }
    m_screen.drawSign(sign);
    m_paused = false;
    if (m_autoMode) {
        m_slideTimer.stop();
        m_cycle.step(sign == SlideSign::Next ? 1 : -1);
    } else if (sign == SlideSign::Next) {
        m_cycle.goOn();
    } else {
        m_cycle.goBack();
    }
    goTo(m_cycle.present(), sign);
}

/// Uses what is there already: the picture decoded ahead or the previous one.
void SlideShow::goTo(FPVItemImage *item, SlideSign sign)
{
    const bool isAhead = item == m_decodingItem && (!m_decodeDone || isReady());
    if (isAhead) {
        if (m_decodeDone) {
            ScreenOut();
        }
        return; // a picture that is still being decoded is drawn by decodeComplete()
    }
    if (sign == SlideSign::Next || !m_screen.isPrevious(item) || !QFile::exists(item->path())) {
        startPicture(item);
        return;
    }
    leaveDecoding();
    m_decodingItem = item;
    m_playBackTimer.start(kPlayBackMs);
}
