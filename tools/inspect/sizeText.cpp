// SPDX-License-Identifier: MIT
#include "tools/inspect/sizeText.h"

#include <QRegularExpression>

std::optional<QSize> sizeFromText(const QString &text)
{
    static const QRegularExpression kPattern(
        QRegularExpression::anchoredPattern(QStringLiteral("([0-9]{1,5})x([0-9]{1,5})")));
    const QRegularExpressionMatch match = kPattern.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    return QSize(match.captured(1).toInt(), match.captured(2).toInt());
}

QString textOfSize(QSize size)
{
    return QString::number(size.width()) + QLatin1Char('x') + QString::number(size.height());
}
