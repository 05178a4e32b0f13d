// SPDX-License-Identifier: MIT
#include "views/folderRoots.h"

#include "platform/Machine.h"

#include <QDir>

QString lumi::photoStorePath()
{
    return QDir::homePath() + QLatin1String("/Documents/Photo_Files");
}

bool lumi::isFolderRoot(const QString &path)
{
    const Machine &machine = Machine::instance();
    return path == photoStorePath() || path == machine.mountPoint(Slot::CF)
        || path == machine.mountPoint(Slot::SD);
}
