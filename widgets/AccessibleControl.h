// SPDX-License-Identifier: MIT
// What screen readers are told about a widget that paints itself. Qt would describe it as a plain
// picture. The class of the widget adds this one as a second base. The name is the accessible name
// of the widget.
#pragma once

#include <QAccessible>

namespace lumi {

class AccessibleControl
{
public:
    AccessibleControl();
    virtual ~AccessibleControl() = default;
    Q_DISABLE_COPY_MOVE(AccessibleControl)

    [[nodiscard]] virtual QAccessible::Role accessibleRole() const = 0;

    /// Adds to the state that every widget has.
    virtual void addAccessibleState(QAccessible::State *state) const = 0;

    /// Does what a tap does. Not called while the widget is hidden or disabled, or while a modal
    /// window blocks it.
    virtual void press() = 0;
};

/// Tells screen readers that the widget was checked or unchecked.
void tellCheckChanged(QWidget *widget);

/// Describes a widget by this role instead of that of its class, and shows all its children to
/// screen readers. To be called from the constructor of the widget, before it gets its name.
void setAccessibleRole(QWidget *widget, QAccessible::Role role);

} // namespace lumi
