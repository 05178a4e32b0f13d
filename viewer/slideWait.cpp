// SPDX-License-Identifier: MIT
#include "viewer/slideWait.h"

#include <algorithm>

int lumi::slideWait(int delay, qint64 elapsed)
{
    const qint64 twice = 2 * qint64{delay};
    return elapsed > twice ? static_cast<int>(std::max<qint64>(0, twice - elapsed)) : delay;
}
