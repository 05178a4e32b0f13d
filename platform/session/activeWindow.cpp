// SPDX-License-Identifier: MIT
#include "platform/session/activeWindow.h"

#include "platform/session/windowSystem.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

#include <xcb/xcb.h>

namespace {

template <class T> using XcbReply = std::unique_ptr<T, decltype(&std::free)>;

xcb_atom_t atomOf(xcb_connection_t *connection, const char *name)
{
    const auto cookie
        = xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(std::strlen(name)), name);
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The window that the window manager calls active, or XCB_NONE; nothing if it doesn't tell.
std::optional<xcb_window_t> activeWindow(xcb_connection_t *connection)
{
    const xcb_atom_t property = atomOf(connection, "_NET_ACTIVE_WINDOW");
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto cookie = xcb_get_property(connection, 0, root, property, XCB_ATOM_WINDOW, 0, 1);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr), &std::free);
    if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(xcb_window_t)) {
        return std::nullopt;
    }
    xcb_window_t window = XCB_NONE;
    std::memcpy(&window, xcb_get_property_value(reply.get()), sizeof window);
    return window;
}

bool isOwn(xcb_window_t id)
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(), [id](const QWindow *window) {
        return window->handle() != nullptr && window->winId() == id;
    });
}

bool isMinimised(const QWindow *window)
{
    return window->isVisible() && window->windowStates().testFlag(Qt::WindowMinimized);
}

} // namespace

bool lumi::isOtherProgramActive()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    if (std::any_of(windows.begin(), windows.end(), isMinimised)) {
        return false;
    }
    if (!isX11()) {
        return true;
    }
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    const auto active = activeWindow(x11->connection());
    return !active || (*active != XCB_NONE && !isOwn(*active));
}
