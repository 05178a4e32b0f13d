// SPDX-License-Identifier: MIT
#include "exif/ui/infoRow.h"

#include <QString>
#include <QStringList>

namespace {

QString escaped(QString value)
{
    value.replace(QLatin1Char(' '), QLatin1String("&nbsp;"));
    value.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    value.replace(QLatin1Char('>'), QLatin1String("&gt;"));
    return value;
}

} // namespace

QString lumi::infoRow(const QString &label, const QString &value, QChar separator)
{
    QString html = QLatin1String("<b>") + label + QLatin1String("</b><br><table border=\"0\">");
    const QStringList pieces = escaped(value).split(separator, Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        html += QLatin1String("<tr><td></td><td>") + piece + QLatin1String("</td></tr>");
    }
    return html + QLatin1String("</table>");
}
