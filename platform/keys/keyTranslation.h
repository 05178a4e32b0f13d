// SPDX-License-Identifier: MIT
// Lets an ordinary keyboard stand in for the device's keys.
#pragma once

class QKeyEvent;
class QWidget;

namespace lumi {

/// Code of the device key that a press or release on its way to the widget stands for, or 0.
/// In text fields every key stands for itself.
[[nodiscard]] int translatedKey(const QWidget *receiver, const QKeyEvent *event);

/// Triggers the enabled shortcut for a device key in the widget's window; false if there is none.
/// Qt does this only for keys that come from the window system.
bool activateShortcut(const QWidget *receiver, int key);

} // namespace lumi
