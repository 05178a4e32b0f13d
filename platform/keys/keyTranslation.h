// SPDX-License-Identifier: MIT
// Lets an ordinary keyboard stand in for the device's keys.
#pragma once

class QKeyEvent;
class QWidget;

namespace lumi {

/// Code of the device key that a press or release for this widget stands for, or 0. Always 0 in
/// text fields.
[[nodiscard]] int translatedKey(const QWidget *receiver, const QKeyEvent *event);

/// Triggers the enabled shortcut for a device key in the widget's window; false if there is none.
/// Qt does this only for keys that come from the window system.
bool activateShortcut(const QWidget *receiver, int key);

} // namespace lumi
