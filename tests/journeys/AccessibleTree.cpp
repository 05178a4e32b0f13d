// SPDX-License-Identifier: MIT
#include "tests/journeys/AccessibleTree.h"

#include "platform/screen/panel.h"
#include "tests/support/contrast.h"
#include "views/FPVPictureView.h"
#include "widgets/MyImageButton.h"

#include <QAbstractButton>
#include <QHash>
#include <QImage>
#include <QMargins>
#include <QMetaEnum>
#include <QWidget>

#include <algorithm>

namespace {

/// The least contrasts of the Web Content Accessibility Guidelines 2.1, level AA.
constexpr double kTextContrast = 4.5;
constexpr double kLargeContrast = 3;
constexpr int kLargePoints = 14;
/// A dark frame does not make a faint text readable.
constexpr QMargins kFrame(4, 4, 4, 4);

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

/// All visible descendants of the element.
void collect(QAccessibleInterface *element, QList<QAccessibleInterface *> *found)
{
    for (int i = 0; i < element->childCount(); ++i) {
        QAccessibleInterface *child = element->child(i);
        if (child == nullptr || child->state().invisible) {
            continue;
        }
        found->append(child);
        collect(child, found);
    }
}

/// The window and everything visible in it.
QList<QAccessibleInterface *> allOf(QWidget *window)
{
    QList<QAccessibleInterface *> found{QAccessible::queryAccessibleInterface(window)};
    collect(found.constFirst(), &found);
    return found;
}

QList<QAccessibleInterface *> inputsOf(QWidget *window)
{
    QList<QAccessibleInterface *> found = allOf(window);
    found.removeIf([](QAccessibleInterface *element) {
        return !takesInput(element);
    });
    return found;
}

/// Whether the element shows a text or a picture of its own. A photo does not count.
bool isPainted(QAccessibleInterface *element)
{
    const QAccessibleTextInterface *text = element->textInterface();
    if (text != nullptr && text->characterCount() == 0) {
        return false;
    }
    const QList<QAccessible::Role> named{QAccessible::StaticText, QAccessible::Button,
                                         QAccessible::ComboBox, QAccessible::MenuItem,
                                         QAccessible::PageTab};
    const bool isNamed
        = named.contains(element->role()) && !element->text(QAccessible::Name).trimmed().isEmpty();
    return (isNamed || element->role() == QAccessible::EditableText) && !element->state().disabled
        && qobject_cast<FPVPictureView *>(element->object()) == nullptr;
}

/// Pictures of buttons and large bold texts need less contrast.
double leastContrast(const QAccessibleInterface *element)
{
    const auto *widget = qobject_cast<QWidget *>(element->object());
    const auto *button = qobject_cast<QAbstractButton *>(element->object());
    const bool isPicture = dynamic_cast<MyImageButton *>(element->object()) != nullptr
        || (button != nullptr && !button->icon().isNull());
    const bool isLarge
        = widget != nullptr && widget->font().bold() && widget->font().pointSize() >= kLargePoints;
    return isPicture || isLarge ? kLargeContrast : kTextContrast;
}

/// Contrast between the most frequent colour and the one that differs most from it.
double contrastIn(const QImage &image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ++counts[image.pixel(x, y)];
        }
    }
    const QRgb ground = std::max_element(counts.begin(), counts.end()).key();
    double greatest = 1;
    for (auto color = counts.keyBegin(); color != counts.keyEnd(); ++color) {
        greatest = std::max(greatest, lumi::test::contrast(QColor(ground), QColor(*color)));
    }
    return greatest;
}

} // namespace

QStringList lumi::test::inputElements(QWidget *window)
{
    QStringList lines;
    for (const QAccessibleInterface *element : inputsOf(window)) {
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
    for (const QAccessibleInterface *element : inputsOf(window)) {
        const QSize size = element->rect().size();
        if (tapped.contains(element->role())
            && std::min(size.width(), size.height()) < kFingerSize) {
            lines.append(lineOf(element)
                         + QStringLiteral(" %1x%2").arg(size.width()).arg(size.height()));
        }
    }
    return lines;
}

QStringList lumi::test::faintElements(QWidget *window)
{
    const QImage shown = window->grab().toImage();
    const QPoint origin = window->mapToGlobal(QPoint());
    QStringList lines;
    for (QAccessibleInterface *element : allOf(window)) {
        const QRect place
            = element->rect().translated(-origin).marginsRemoved(kFrame) & shown.rect();
        if (place.isEmpty() || !isPainted(element)) {
            continue;
        }
        const double contrast = contrastIn(shown.copy(place));
        if (contrast < leastContrast(element)) {
            lines.append(lineOf(element) + QStringLiteral(" %1").arg(contrast));
        }
    }
    return lines;
}

QAccessibleInterface *lumi::test::elementNamed(QWidget *window, const QString &name)
{
    for (QAccessibleInterface *element : inputsOf(window)) {
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
