// SPDX-License-Identifier: MIT
// Puts texts into a display format of the tag dictionary. The C library is not asked to do
// it: a format is data here, and a wrong one must not be able to do harm.
#pragma once

#include <QStringList>

namespace lumi {

/// format with each %d and %s replaced by the next of values, which are not looked at again.
/// A placeholder without a value becomes nothing.
[[nodiscard]] QString fillFormat(const QString &format, const QStringList &values);

} // namespace lumi
