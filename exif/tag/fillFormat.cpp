// SPDX-License-Identifier: MIT
#include "exif/tag/fillFormat.h"

QString lumi::fillFormat(const QString &format, const QStringList &values)
{
    QString filled;
    qsizetype used = 0;
    for (qsizetype i = 0; i < format.size(); ++i) {
        const QStringView two = QStringView(format).mid(i, 2);
        if (two == u"%d" || two == u"%s") {
            filled += values.value(used);
            ++used;
            ++i;
        } else {
            filled += format.at(i);
        }
    }
    return filled;
}
