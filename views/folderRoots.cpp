// SPDX-License-Identifier: MIT
#include "views/folderRoots.h"

#include "app/common/paths.h"
#include "platform/cards/CardSlots.h"

QString lumi::photoStorePath()
{
    return documentsPath() + QLatin1String("/Photo_Files");
}

bool lumi::isFolderRoot(const QString &path)
{
    return path == photoStorePath() || path == CardSlots::mountPoint(Slot::CF)
        || path == CardSlots::mountPoint(Slot::SD);
}
