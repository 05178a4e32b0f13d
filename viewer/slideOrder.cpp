// SPDX-License-Identifier: MIT
#include "viewer/slideOrder.h"

#include <algorithm>
#include <limits>

std::vector<int> lumi::slideOrder(const std::vector<bool> &isPicture, int startIndex,
                                  const SlideDice &dice)
{
    const auto count = static_cast<qint64>(isPicture.size());
    const auto pictures
        = static_cast<std::size_t>(std::count(isPicture.begin(), isPicture.end(), true));
    std::vector<bool> left = isPicture;
    std::vector<int> order;
    order.reserve(pictures);
    qint64 place = startIndex < 0 ? -1 : qint64{startIndex} - 1;
    while (order.size() < pictures) {
        place = (dice ? qint64{dice()} : place + 1) % count;
        const auto i = static_cast<std::size_t>(place);
        if (left[i]) {
            left[i] = false;
            order.push_back(static_cast<int>(place));
        }
    }
    return order;
}

lumi::SlideStep lumi::slideStep(int from, int steps, int count)
{
    const qint64 target = qint64{from} + steps;
    qint64 rounds = target / count;
    qint64 index = target % count;
    if (index < 0) {
        index += count;
        --rounds;
    }
    return {static_cast<int>(index), static_cast<int>(rounds)};
}

int lumi::slideWait(int delay, qint64 elapsed)
{
    const qint64 twice = 2 * qint64{delay};
    const qint64 wait = elapsed > twice ? twice - elapsed : delay;
    return static_cast<int>(std::clamp<qint64>(wait, 0, std::numeric_limits<int>::max()));
}
