// SPDX-License-Identifier: MIT
// The HTML of one field in the info panel.
#pragma once

class QChar;
class QString;

namespace lumi {

/// The label in bold and the value below it, one line for each part between separators. Blanks in
/// the value do not wrap, and angle brackets are escaped. "&" is not: it starts an entity.
[[nodiscard]] QString infoRow(const QString &label, const QString &value, QChar separator);

} // namespace lumi
