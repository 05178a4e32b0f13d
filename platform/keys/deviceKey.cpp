// SPDX-License-Identifier: MIT
#include "platform/keys/deviceKey.h"

#include <QKeyEvent>

#include <algorithm>
#include <iterator>

namespace {

struct Row
{
    int code;
    DeviceKey key;
};

constexpr Row kRows[] = {
    {kKeyZoomIn, DeviceKey::ZoomIn},
    {Qt::Key_ZoomIn, DeviceKey::ZoomIn},
    {kKeyZoomOut, DeviceKey::ZoomOut},
    {Qt::Key_ZoomOut, DeviceKey::ZoomOut},
    {kKeyFit, DeviceKey::Fit},
    {Qt::Key_F23, DeviceKey::Fit},
    {kKeyMenu, DeviceKey::Menu},
    {Qt::Key_F11, DeviceKey::Menu},
    {Qt::Key_Menu, DeviceKey::Menu},
    {kKeyMail, DeviceKey::Mail},
    {Qt::Key_LaunchMail, DeviceKey::Mail},
    {kKeyStop, DeviceKey::Stop},
    {Qt::Key_Cancel, DeviceKey::Stop},
    {Qt::Key_Back, DeviceKey::Stop},
};

} // namespace

DeviceKey deviceKey(const QKeyEvent *event)
{
    const auto *row = std::find_if(std::begin(kRows), std::end(kRows), [event](const Row &r) {
        return r.code == event->key();
    });
    return row != std::end(kRows) ? row->key : DeviceKey::None;
}
