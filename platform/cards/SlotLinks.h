// SPDX-License-Identifier: MIT
// The fixed paths of the slots that follow the desktop's mounts: one link per slot in a folder of the
// user's runtime folder. A link leads to the folder of a card, or to an empty folder with the marker
// "NotAvailable". The paths are the same at each start, so the thumbnails of a card are found again.
// They stay at the end of the program. The end of the session removes the runtime folder.
#pragma once

#include "platform/Machine.h"

#include <QString>

namespace lumi {

class SlotLinks
{
public:
    /// Makes the links of all slots; they lead to the empty folder.
    SlotLinks();

    /// The path of the slot's link, existing or not. Each home has its own. Empty if there is no
    /// runtime folder.
    [[nodiscard]] static QString path(Slot slot);

    /// Lets the link lead to this folder, or to the empty folder if `folder` is empty.
    void lead(Slot slot, const QString &folder);

private:
    [[nodiscard]] bool makeEmptySlot() const;

    QString m_empty; ///< the folder of an empty slot
    QString m_marker;
};

} // namespace lumi
