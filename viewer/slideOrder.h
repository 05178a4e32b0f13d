// SPDX-License-Identifier: MIT
// The order of a slideshow and the steps in it, as plain numbers.
#pragma once

#include <QtGlobal>

#include <functional>
#include <vector>

namespace lumi {

/// A source of random numbers of 0 or more.
using SlideDice = std::function<int()>;

/// The places of the pictures among all items in the order in which they are played: from
/// startIndex (the first item if negative) on and round, or, with dice, as these fall.
[[nodiscard]] std::vector<int> slideOrder(const std::vector<bool> &isPicture, int startIndex,
                                          const SlideDice &dice = {});

/// Where steps lead in a round.
struct SlideStep
{
    int index = 0;  ///< in the list
    int rounds = 0; ///< how often the end was passed; negative for the start

    friend bool operator==(const SlideStep &, const SlideStep &) = default;
};

/// steps of either sign from a place of a list of count (at least 1) pictures.
[[nodiscard]] SlideStep slideStep(int from, int steps, int count);

/// Milliseconds to wait after a picture whose decode began `elapsed` ms ago: the delay, unless
/// the decode took more than twice as long; then none.
[[nodiscard]] int slideWait(int delay, qint64 elapsed);

} // namespace lumi
