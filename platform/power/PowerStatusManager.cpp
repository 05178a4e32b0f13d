// SPDX-License-Identifier: MIT
#include "platform/power/PowerStatusManager.h"

PowerStatus PowerStatusManager::readStatus()
{
    return Machine::instance().power();
}
