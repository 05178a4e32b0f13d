// SPDX-License-Identifier: MIT
#include "widgets/AccessibleControl.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QVariant>
#include <QWidget>

namespace {

constexpr char kRoleProperty[] = "accessibleRole";

/// A modal window takes the input of all other windows.
bool takesInput(const QWidget *widget)
{
    const QWidget *modal = QApplication::activeModalWidget();
    return widget->isVisible() && widget->isEnabled()
        && (modal == nullptr || modal == widget->window());
}

class ControlInterface : public QAccessibleWidget
{
public:
    explicit ControlInterface(QWidget *widget)
        : QAccessibleWidget(widget)
    { }

    [[nodiscard]] QAccessible::Role role() const override
    {
        const lumi::AccessibleControl *known = control();
        return known != nullptr ? known->accessibleRole() : QAccessibleWidget::role();
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (const lumi::AccessibleControl *known = control()) {
            known->addAccessibleState(&state);
        }
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name != pressAction()) {
            QAccessibleWidget::doAction(name);
            return;
        }
        // The screen reader waits until this returns, and a press may open a dialog.
        QMetaObject::invokeMethod(
            widget(),
            [pressed = control(), place = widget()] {
                if (takesInput(place)) {
                    pressed->press();
                }
            },
            Qt::QueuedConnection);
    }

private:
    /// Null while the widget is being destroyed.
    [[nodiscard]] lumi::AccessibleControl *control() const
    {
        return dynamic_cast<lumi::AccessibleControl *>(object());
    }
};

QAccessibleInterface *makeInterface(const QString & /*className*/, QObject *object)
{
    const QVariant role = object->property(kRoleProperty);
    if (role.isValid()) {
        return new QAccessibleWidget(static_cast<QWidget *>(object),
                                     static_cast<QAccessible::Role>(role.toInt()));
    }
    const bool isControl = dynamic_cast<lumi::AccessibleControl *>(object) != nullptr;
    return isControl ? new ControlInterface(static_cast<QWidget *>(object)) : nullptr;
}

} // namespace

lumi::AccessibleControl::AccessibleControl()
{
    QAccessible::installFactory(makeInterface); // only the first call has an effect
}

void lumi::setAccessibleRole(QWidget *widget, QAccessible::Role role)
{
    widget->setProperty(kRoleProperty, int(role));
    QAccessible::installFactory(makeInterface); // only the first call has an effect
}

void lumi::tellCheckChanged(QWidget *widget)
{
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(widget, changed);
    QAccessible::updateAccessibility(&event);
}
