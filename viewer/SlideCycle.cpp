// SPDX-License-Identifier: MIT
#include "viewer/SlideCycle.h"

#include "items/FPVItemImage.h"

#include <algorithm>

namespace {

struct Target
{
    int place;
    int rounds; ///< how often the end was passed; negative for the start
};

Target targetOf(int from, int steps, int count)
{
    const int target = from + steps;
    const int place = (target % count + count) % count;
    return {place, (target - place) / count};
}

} // namespace

lumi::SlideCycle::SlideCycle(const FPVItemList &items, int startIndex, int loopCount,
                             const Dice &dice)
    : m_loopCount(loopCount)
{
    std::vector<FPVItemObject *> left(items.begin(), items.end());
    const auto count = static_cast<qint64>(left.size());
    const auto pictures = std::count_if(left.begin(), left.end(), [](const FPVItemObject *item) {
        return item->isPicture();
    });
    qint64 place = startIndex < 0 ? -1 : qint64{startIndex} - 1;
    while (static_cast<std::ptrdiff_t>(m_pictures.size()) < pictures) {
        place = (dice ? qint64{dice()} : place + 1) % count;
        FPVItemObject *&item = left[static_cast<std::size_t>(place)];
        if (item != nullptr && item->isPicture()) {
            m_pictures.push_back(qobject_cast<FPVItemImage *>(item));
            item = nullptr;
        }
    }
}

FPVItemImage *lumi::SlideCycle::present() const
{
    return isEmpty() ? nullptr : m_pictures[static_cast<std::size_t>(m_place)];
}

bool lumi::SlideCycle::roundsAreOver() const
{
    return m_loopCount != 0 && m_loopsDone >= m_loopCount;
}

void lumi::SlideCycle::goOn()
{
    m_aheadInNewRound = false;
    ++m_place;
    if (m_place == static_cast<int>(m_pictures.size())) {
        startNewRound();
    }
}

void lumi::SlideCycle::goBack()
{
    m_place = (m_place > 0 ? m_place : static_cast<int>(m_pictures.size())) - 1;
}

void lumi::SlideCycle::step(int direction)
{
    if (m_aheadInNewRound) {
        // The picture decoded ahead is not shown, so its round does not begin.
        m_aheadInNewRound = false;
        --m_loopsDone;
    }
    const int start = placeOf(m_startItem);
    const int from = start < 0 ? m_place : start;
    const auto count = static_cast<int>(m_pictures.size());
    const Target before = targetOf(from, m_step, count);
    m_step += direction;
    m_isStepPending = true;
    const Target after = targetOf(from, m_step, count);
    m_loopsDone += after.rounds - before.rounds;
    m_place = after.place;
}

void lumi::SlideCycle::setShown(const FPVItemImage *picture)
{
    setShownAgain(picture);
    m_loopsDone = std::max(0, m_loopsDone);
}

void lumi::SlideCycle::setShownAgain(const FPVItemImage *picture)
{
    m_startItem = picture;
    m_step = 0;
    m_isStepPending = false;
}

void lumi::SlideCycle::remove(const FPVItemImage *picture, const FPVItemImage *ahead)
{
    if (m_startItem == picture) {
        m_startItem = nullptr;
    }
    m_place = placeOf(picture);
    m_pictures.erase(m_pictures.begin() + m_place);
    if (ahead != nullptr) {
        m_place = placeOf(ahead);
    } else if (m_place == static_cast<int>(m_pictures.size())) {
        startNewRound();
    }
}

void lumi::SlideCycle::repairSteps()
{
    if (m_startItem == nullptr || m_isStepPending) {
        countStepsFromPresent();
    }
}

void lumi::SlideCycle::awaitPresent()
{
    countStepsFromPresent();
    m_isStepPending = true;
}

int lumi::SlideCycle::placeOf(const FPVItemImage *picture) const
{
    const auto found = std::find(m_pictures.begin(), m_pictures.end(), picture);
    return found == m_pictures.end() ? -1 : static_cast<int>(found - m_pictures.begin());
}

void lumi::SlideCycle::startNewRound()
{
    m_place = 0;
    ++m_loopsDone;
    m_aheadInNewRound = true;
}

void lumi::SlideCycle::countStepsFromPresent()
{
    m_startItem = present();
    m_step = 0;
    m_aheadInNewRound = false;
}
