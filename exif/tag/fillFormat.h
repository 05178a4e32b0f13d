// SPDX-License-Identifier: MIT
// Puts texts into a display format of the tag dictionary. Not done with printf(), because a wrong
// format there would be undefined behaviour.
#pragma once

#include <QStringList>

namespace lumi {

/// format with each %d and %s replaced by the next of values. Placeholders inside values are left
/// as they are. A placeholder without a value is removed.
[[nodiscard]] QString fillFormat(const QString &format, const QStringList &values);

} // namespace lumi
