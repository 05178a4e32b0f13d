// SPDX-License-Identifier: MIT
#include "tests/journeys/AccessibleTree.h"

#include "platform/screen/panel.h"

#include <QMetaEnum>
#include <QWidget>

#include <algorithm>

namespace {

/// The name that Qt gives to a list of choices is the chosen one. Its own name is that of its label,
/// or its description.
QString nameOf(const QAccessibleInterface *element)
{
    if (element->role() != QAccessible::ComboBox) {
        return element->text(QAccessible::Name).trimmed();
    }
    const auto labels = element->relations(QAccessible::Label);
    return labels.isEmpty() ? element->text(QAccessible::Description)
                            : labels.first().first->text(QAccessible::Name);
}

bool takesInput(QAccessibleInterface *element)
{
    const QAccessible::State state = element->state();
    return state.focusable || state.editable || state.checkable || state.selectable
        || element->role() == QAccessible::ScrollBar || element->role() == QAccessible::Button
        || (element->actionInterface() != nullptr
            && !element->actionInterface()->actionNames().isEmpty());
}

QString lineOf(const QAccessibleInterface *element)
{
    const QAccessible::State state = element->state();
    const QLatin1String role(QMetaEnum::fromType<QAccessible::Role>().valueToKey(element->role()));
    QString line = role + QStringLiteral(" '%1'").arg(nameOf(element));
    const std::pair<bool, const char *> words[]
        = {{bool(state.disabled), "disabled"}, {bool(state.checked), "checked"},
           {bool(state.selected), "selected"}, {bool(state.focused), "focused"},
           {bool(state.editable), "editable"}, {bool(state.checkable), "checkable"}};
    for (const auto &[isSet, word] : words) {
        line += isSet ? QString(QLatin1Char(' ') + QLatin1String(word)) : QString();
    }
    return line;
}

/// All visible descendants of the element that take input.
void collect(QAccessibleInterface *element, QList<QAccessibleInterface *> *found)
{
    for (int i = 0; i < element->childCount(); ++i) {
        QAccessibleInterface *child = element->child(i);
        if (child == nullptr || child->state().invisible) {
            continue;
        }
        if (takesInput(child)) {
            found->append(child);
        }
        collect(child, found);
    }
}

QList<QAccessibleInterface *> allOf(QWidget *window)
{
    QList<QAccessibleInterface *> found;
    QAccessibleInterface *root = QAccessible::queryAccessibleInterface(window);
    if (takesInput(root)) {
        found.append(root);
    }
    collect(root, &found);
    return found;
}

} // namespace

QStringList lumi::test::inputElements(QWidget *window)
{
    QStringList lines;
    for (const QAccessibleInterface *element : allOf(window)) {
        lines.append(lineOf(element));
    }
    return lines;
}

QStringList lumi::test::smallTargets(QWidget *window)
{
    const QList<QAccessible::Role> tapped{QAccessible::Button,   QAccessible::CheckBox,
                                          QAccessible::ComboBox, QAccessible::EditableText,
                                          QAccessible::ListItem, QAccessible::MenuItem,
                                          QAccessible::PageTab};
    QStringList lines;
    for (const QAccessibleInterface *element : allOf(window)) {
        const QSize size = element->rect().size();
        if (tapped.contains(element->role())
            && std::min(size.width(), size.height()) < kFingerSize) {
            lines.append(lineOf(element)
                         + QStringLiteral(" %1x%2").arg(size.width()).arg(size.height()));
        }
    }
    return lines;
}

QAccessibleInterface *lumi::test::elementNamed(QWidget *window, const QString &name)
{
    for (QAccessibleInterface *element : allOf(window)) {
        if (nameOf(element) == name) {
            return element;
        }
    }
    return nullptr;
}

bool lumi::test::pressElement(QWidget *window, const QString &name)
{
    QAccessibleInterface *element = elementNamed(window, name);
    const QString press = QAccessibleActionInterface::pressAction();
    if (element == nullptr || element->actionInterface() == nullptr
        || !element->actionInterface()->actionNames().contains(press)) {
        return false;
    }
    element->actionInterface()->doAction(press);
    return true;
}
