// SPDX-License-Identifier: MIT
#include "platform/PowerStatusManager.h"

PowerStatus PowerStatusManager::readStatus()
{
    return Machine::instance().power();
}
