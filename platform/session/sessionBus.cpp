// SPDX-License-Identifier: MIT
#include "platform/session/sessionBus.h"

#include <QDBusConnection>
#include <QFile>

bool lumi::hasSessionBus()
{
    const bool hasAddress = !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")
        || (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")
            && QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1String("/bus")));
    return hasAddress && QDBusConnection::sessionBus().isConnected();
}
