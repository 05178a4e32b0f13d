// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>
#include <QLatin1String>

namespace lumi {

/// Whether the program runs as a client of a Wayland compositor.
[[nodiscard]] inline bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

/// Whether the program runs as a client of an X server.
[[nodiscard]] inline bool isX11()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

} // namespace lumi
