// SPDX-License-Identifier: MIT
#include "app/common/power.h"

#include "platform/power/PowerStatusManager.h"
#include "platform/session/QCopEnvelope.h"

namespace {

// Values that the system's screen saver service understands: the first two stop it, the last
// restores its own delay.
constexpr int kScreenSaverOff = 0;
constexpr int kScreenSaverHold = 300;
constexpr int kScreenSaverBack = 200;

void sendScreenSaverMode(int value)
{
    QCopEnvelope envelope(QByteArrayLiteral("QPE/System"),
                          QByteArrayLiteral("setScreenSaverMode(int)"));
    envelope << value;
}

} // namespace

void setScreenSaver(int mode)
{
    if (mode == 0) {
        sendScreenSaverMode(kScreenSaverOff);
        sendScreenSaverMode(kScreenSaverHold);
    } else {
        sendScreenSaverMode(kScreenSaverBack);
    }
}

bool batteryEnough(int percent)
{
    const PowerStatus status = PowerStatusManager::readStatus();
    return status.acStatus() == PowerStatus::Online || status.batteryPercentRemaining() > percent;
}
