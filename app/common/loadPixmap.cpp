// SPDX-License-Identifier: MIT
#include "app/common/loadPixmap.h"

#include <QPainter>

QPixmap lumi::loadPixmap(const char *name, QSize size, const QString &text)
{
    QPixmap picture = loadPixmap(name);
    if (picture.isNull()) {
        picture = QPixmap(size);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.setPen(Qt::black);
        painter.drawRect(0, 0, size.width() - 1, size.height() - 1);
        painter.drawText(picture.rect(), Qt::AlignCenter | Qt::TextWordWrap, text);
    }
    return picture;
}
