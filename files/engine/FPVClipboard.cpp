// SPDX-License-Identifier: MIT
#include "files/engine/FPVClipboard.h"

void FPVClipboard::take(const QStringList &paths, bool cut)
{
    m_paths = paths;
    m_cut = cut;
}
