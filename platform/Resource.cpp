// SPDX-License-Identifier: MIT
#include "platform/Resource.h"

#include "platform/Machine.h"

#include <QFileInfo>
#include <QGuiApplication>

namespace {

constexpr qreal kDenseRatio = 2;

QString pictureFolder()
{
    return Machine::instance().resourceDir() + QLatin1String("/pixmaps/");
}

/// Empty if there is no such file.
QString findFile(const QString &name, const char *ending)
{
    const QString path = pictureFolder() + name + QLatin1String(ending);
    return QFileInfo(path).isFile() ? path : QString();
}

} // namespace

QPixmap Resource::loadPixmap(const QString &name)
{
    if (qGuiApp->devicePixelRatio() > 1) {
        QPixmap dense(findFile(name, "@2x.png"));
        if (!dense.isNull()) {
            dense.setDevicePixelRatio(kDenseRatio);
            return dense;
        }
    }
    return QPixmap(findPixmap(name));
}

bool Resource::areInstalled()
{
    return QFileInfo(pictureFolder()).isDir();
}

QString Resource::findPixmap(const QString &name)
{
    return findFile(name, ".png");
}
