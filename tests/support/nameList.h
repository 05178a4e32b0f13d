// SPDX-License-Identifier: MIT
// Lists of file names in a short form.
#pragma once

#include <QString>
#include <QStringList>

namespace lumi::test {

/// Names without blanks, with a blank between them.
[[nodiscard]] inline QStringList list(const char *names)
{
    return QString::fromUtf8(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace lumi::test
