// SPDX-License-Identifier: MIT
#pragma once

class QByteArray;
class QWidget;

namespace lumi {

/// Brings the window and its open dialog to the front, as far as the desktop allows it.
/// @param token activation token of the program that asks for it; may be empty
void bringToFront(QWidget *window, const QByteArray &token);

} // namespace lumi
