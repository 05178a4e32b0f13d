// SPDX-License-Identifier: MIT
#include "views/folderRoots.h"

#include "app/common/paths.h"
#include "platform/Machine.h"

QString lumi::photoStorePath()
{
    return documentsPath() + QLatin1String("/Photo_Files");
}

bool lumi::isFolderRoot(const QString &path)
{
    const Machine &machine = Machine::instance();
    return path == photoStorePath() || path == machine.mountPoint(Slot::CF)
        || path == machine.mountPoint(Slot::SD);
}
