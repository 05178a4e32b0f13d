// SPDX-License-Identifier: MIT
#include "platform/Resource.h"

#include "platform/Machine.h"

#include <QFile>
#include <QGuiApplication>

namespace {

constexpr qreal kDenseRatio = 2;

QString filePath(const QString &name, const char *ending)
{
    return Machine::instance().resourceDir() + QLatin1String("/pixmaps/") + name
        + QLatin1String(ending);
}

} // namespace

QPixmap Resource::loadPixmap(const QString &name)
{
    if (qGuiApp != nullptr && qGuiApp->devicePixelRatio() > 1) {
        QPixmap dense(filePath(name, "@2x.png"));
        if (!dense.isNull()) {
            dense.setDevicePixelRatio(kDenseRatio);
            return dense;
        }
    }
    const QString path = findPixmap(name);
    return path.isEmpty() ? QPixmap() : QPixmap(path);
}

QString Resource::findPixmap(const QString &name)
{
    const QString path = filePath(name, ".png");
    return QFile::exists(path) ? path : QString();
}
