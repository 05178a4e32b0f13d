// SPDX-License-Identifier: MIT
// A desktop's scale factor can make the program's window larger than a small screen. The factor of
// this process is then lowered.
#pragma once

#include <QSize>
#include <QtGlobal>

#include <optional>

namespace lumi {

/// The factor with which the panel fits a screen of this size, at least 1; nothing if it fits with
/// the present ratio.
/// logical: size of the screen in logical pixels. ratio: physical pixels of a logical one.
[[nodiscard]] std::optional<qreal> cappedScale(QSize logical, qreal ratio);

/// Starts this program anew with a lower factor if it needs one: Qt reads the factor only once.
/// Call it after the application object was made and before anything is opened.
void capScale(char **argv);

} // namespace lumi
