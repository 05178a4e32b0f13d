// SPDX-License-Identifier: MIT
// The markup of one field in the info panel.
#pragma once

class QChar;
class QString;

namespace lumi {

/// The label in bold and below it the value, a line for every piece between separators. Blanks
/// of the value don't break and its angle brackets are shown; "&" begins an entity.
[[nodiscard]] QString infoRow(const QString &label, const QString &value, QChar separator);

} // namespace lumi
