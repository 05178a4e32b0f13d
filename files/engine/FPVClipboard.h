// SPDX-License-Identifier: MIT
// What was copied or cut in the browser: absolute paths in the order of taking, and whether
// the sources go away after a paste. It is the program's own and not the system's clipboard.
#pragma once

#include <QStringList>

class FPVClipboard
{
public:
    [[nodiscard]] const QStringList &paths() const { return m_paths; }

    [[nodiscard]] bool isCut() const { return m_cut; }

    void take(const QStringList &paths, bool cut);

private:
    QStringList m_paths;
    bool m_cut = false;
};
