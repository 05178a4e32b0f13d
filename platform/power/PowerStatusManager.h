// SPDX-License-Identifier: MIT
// Gives access to the state of the power supply.
#pragma once

#include "platform/Machine.h"

class PowerStatusManager
{
public:
    /// Reads the state at each call; a machine without a battery is on external power with 100 %.
    static PowerStatus readStatus();
};
