// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Resource.h"

#include <QSize>
#include <QString>

namespace lumi {

/// One of the program's own pictures, such as "look_a", or a null pixmap.
[[nodiscard]] inline QPixmap loadPixmap(const char *name)
{
    return Resource::loadPixmap(QLatin1String("lumivault/") + QLatin1String(name));
}

/// The same, but if the file is missing, a plain picture of this size that shows the text.
[[nodiscard]] QPixmap loadPixmap(const char *name, QSize size, const QString &text);

} // namespace lumi
