// SPDX-License-Identifier: MIT
#include "app/common/labels.h"

#include <QFontMetrics>
#include <QLabel>
#include <QString>

namespace {

/// Keeps characters from the start of the text as long as they fit together with the dots.
QString elided(const QString &text, const QFontMetrics &metrics, int width)
{
    const QString dots = QStringLiteral("...");
    if (metrics.horizontalAdvance(text) <= width) {
        return text;
    }
    qsizetype taken = 0;
    while (taken < text.size()) {
        const bool isPair = text.at(taken).isHighSurrogate() && taken + 1 < text.size()
            && text.at(taken + 1).isLowSurrogate();
        const qsizetype next = taken + (isPair ? 2 : 1);
        if (metrics.horizontalAdvance(QString(text.left(next) + dots)) > width) {
            break;
        }
        taken = next;
    }
    return text.left(taken) + dots;
}

} // namespace

void elideToLabel(QLabel *label, const QString &text)
{
    // Names of files are shown this way: they must not be taken for markup.
    label->setTextFormat(Qt::PlainText);
    label->setText(elided(text, QFontMetrics(label->font()), label->width()));
}

QString elideToChars(const QWidget *widget, const QString &text, int count)
{
    const QFontMetrics metrics(widget->font());
    return elided(text, metrics, qMax(0, count) * metrics.horizontalAdvance(QLatin1Char('X')));
}

void setFontSize(QWidget *widget, int points)
{
    if (points <= 0) {
        return;
    }
    QFont font = widget->font();
    font.setPointSize(points);
    widget->setFont(font);
}
