// SPDX-License-Identifier: MIT
// The denominator with which the digits after a dot are stored. It depends on the value of the
// number, not on how many digits were written: 05 is five tenths. Existing photos are stored this
// way, so reader and writer must agree on it.
#pragma once

#include <QtGlobal>

namespace lumi {

[[nodiscard]] constexpr quint32 fractionScale(quint32 fraction)
{
    constexpr quint32 kTenths = 10;
    constexpr quint32 kHundredths = 100;
    constexpr quint32 kThousandths = 1000;
    if (fraction >= kHundredths) {
        return kThousandths;
    }
    if (fraction >= kTenths) {
        return kHundredths;
    }
    return fraction > 0 ? kTenths : 1;
}

} // namespace lumi
