// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Resource.h"

namespace lumi {

/// One of the program's own pictures, such as "look_a", or a null pixmap.
[[nodiscard]] inline QPixmap loadPixmap(const char *name)
{
    return Resource::loadPixmap(QLatin1String("lumivault/") + QLatin1String(name));
}

} // namespace lumi
