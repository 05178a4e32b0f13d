// SPDX-License-Identifier: MIT
// The steps that the user asks for.
#include "platform/screen/QDirectPainter.h"
#include "viewer/SlideShow.h"
#include "viewer/slideOrder.h"

#include <QFile>

using lumi::SlideSign;

namespace {

constexpr int kPlayBackMs = 1;

} // namespace

void SlideShow::userNext(bool show)
{
    step(SlideSign::Next, show);
}

void SlideShow::userPrevious(bool show)
{
    step(SlideSign::Previous, show);
}

void SlideShow::step(SlideSign sign, bool show)
{
    if (m_ended || m_failed || isInterrupted() || m_playList.isEmpty()) {
        return;
    }
    if (roundsAreOver()) {
        end(ToBrowser);
        return;
    }
    setOverlay(sign, show);
    m_paused = false;
    if (m_autoMode) {
        jump(sign);
    } else if (sign == SlideSign::Next) {
        nextInList();
    } else {
        prevInList();
    }
}

void SlideShow::prevInList()
{
    if (m_playList.prev() == nullptr) {
        m_playList.last();
    }
    goTo(currentPicture(), SlideSign::Previous);
}

/// Steps add up until one of them is on the screen: they are counted from the picture there, and
/// not from what is being decoded.
void SlideShow::jump(SlideSign sign)
{
    m_prevStep = m_step;
    m_step += sign == SlideSign::Next ? 1 : -1;
    m_slideTimer.stop();
    if (m_aheadInNewRound) {
        // The picture ahead was begun for nothing.
        m_aheadInNewRound = false;
        --m_loopsDone;
    }
    const int count = m_playList.count();
    const int cursor = m_playList.at();
    const int start = m_playList.findRef(m_startItem);
    const int from = start < 0 ? cursor : start;
    const lumi::SlideStep before = lumi::slideStep(from, *m_prevStep, count);
    const lumi::SlideStep after = lumi::slideStep(from, m_step, count);
    m_loopsDone += after.rounds - before.rounds;
    m_playList.at(after.index);
    goTo(currentPicture(), sign);
}

/// Takes what is there already, if it is: the picture decoded ahead or the last one shown.
void SlideShow::goTo(FPVItemImage *item, SlideSign sign)
{
    const bool isAhead = item == m_decodingItem && (!m_decodeDone || isReady());
    if (isAhead) {
        if (m_decodeDone) {
            ScreenOut();
        }
        return; // else it comes when it is decoded
    }
    const bool isLast = sign == SlideSign::Previous && m_prevRaster && m_prevRaster->item == item
        && QFile::exists(item->path());
    if (!isLast) {
        startPicture(item);
        return;
    }
    leaveDecoding();
    m_decodingItem = item;
    m_playBackTimer.start(kPlayBackMs);
}

void SlideShow::setOverlay(SlideSign sign, bool show)
{
    if (m_overlay != SlideSign::None && sign != SlideSign::None) {
        m_overlay = SlideSign::None;
        if (show) {
            ScreenOutRedraw();
        }
    }
    m_overlay = sign;
    if (!show) {
        return;
    }
    QDirectPainter painter(this);
    uchar *bits = painter.frameBuffer();
    if (bits != nullptr && painter.depth() == m_depth) {
        lumi::drawSlideSign({bits, painter.lineStep(), m_depth, m_screenSize}, sign);
    }
}
