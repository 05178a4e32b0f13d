// SPDX-License-Identifier: MIT
// What libjpeg alone takes for a progressive photo of 12 megapixels: the measure for everything
// that a thumbnail, a mail copy or an embedded picture may cost.
#pragma once

#include <QString>

#include <functional>

namespace lumi::test {

struct Cost
{
    double milliseconds = 0;
    long kilobytes = 0; ///< peak; 0 where memory cannot be measured, see PeakMemory
};

[[nodiscard]] Cost costOf(const std::function<void()> &job);

/// The text is empty if the job takes at most twice what the bare decoder does, else it tells both
/// costs. A job that is too slow is measured again, and the decoder with it, since the machine may
/// be busy.
[[nodiscard]] QString faultOfCost(const std::function<void()> &job);

} // namespace lumi::test
