// SPDX-License-Identifier: MIT
// Names for the keys that only the handheld has. An ordinary keyboard stands in for them:
// QPEApplication translates its keys before a widget sees them, except in text fields.
#pragma once

class QKeyEvent;

enum class DeviceKey { None, ZoomIn, ZoomOut, Fit, Menu, Mail, Stop };

/// Codes with which the device keys arrive.
inline constexpr int kKeyZoomIn = 0x2010;
inline constexpr int kKeyZoomOut = 0x200F;
inline constexpr int kKeyFit = 0x1046;
inline constexpr int kKeyMenu = 0x103A;
inline constexpr int kKeyMail = 0x201A;
inline constexpr int kKeyStop = -1;

/// The device key of a press or release. Recognises the handheld's codes and the keys of the same
/// meaning on current keyboards. Not for text fields, where some of the codes are characters.
DeviceKey deviceKey(const QKeyEvent *event);
