// SPDX-License-Identifier: MIT
// What a screen reader finds in a window.
#pragma once

#include <QAccessible>
#include <QStringList>

class QWidget;

namespace lumi::test {

/// A line for each visible element that takes input: role, name in quotes and states, for example
/// "button 'Large' checked". The order is that of the tree.
[[nodiscard]] QStringList inputElements(QWidget *window);

/// The same for elements to be tapped, for example buttons, whose shorter side has fewer than
/// kFingerSize pixels.
[[nodiscard]] QStringList smallTargets(QWidget *window);

/// The same for enabled elements whose text or picture does not stand out from its ground.
[[nodiscard]] QStringList faintElements(QWidget *window);

/// The visible element that takes input and has this name; null if there is none.
[[nodiscard]] QAccessibleInterface *elementNamed(QWidget *window, const QString &name);

/// Carries out the Press action of the element with this name. False if there is none.
[[nodiscard]] bool pressElement(QWidget *window, const QString &name);

} // namespace lumi::test
