// SPDX-License-Identifier: MIT
// The folders that ./run demo shows: a photo store and two cards as different people would
// fill them, with everything a browser must cope with: nested, empty and odd folders, names
// too long for a label or not in ASCII, files that are no photos and one that is damaged.
#pragma once

#include <QString>

namespace lumi::photos {

/// Makes <folder>/home/Documents/Photo_Files, <folder>/cf and <folder>/sd, keeping what is
/// already there under the same name. False after a message on standard error.
[[nodiscard]] bool makeDemoTree(const QString &folder);

} // namespace lumi::photos
