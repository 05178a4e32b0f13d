// SPDX-License-Identifier: MIT
// The denominator under which the digits behind a dot are stored. It goes by the size of the
// number and not by the digits as they were written: 05 is five tenths. A value reads back as
// the text it was made of only if reader and writer agree on it.
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
