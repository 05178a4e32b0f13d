// SPDX-License-Identifier: MIT
// The cost of a bare libjpeg decode of a progressive photo of 12 megapixels. Thumbnails, mail
// copies and embedded pictures are compared with it.
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

/// Empty if the job takes at most twice the cost of the bare decoder, else a text with both costs.
/// If the job is too slow, both are measured again, because the machine may be busy.
[[nodiscard]] QString faultOfCost(const std::function<void()> &job);

} // namespace lumi::test
