// SPDX-License-Identifier: MIT
#include "platform/screen/PanelStyle.h"

#include "platform/screen/panel.h"
#include "platform/toolkit/QPopupMenu.h"

#include <QDialogButtonBox>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionMenuItem>

namespace {

bool isEntry(const QStyleOption *option)
{
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    return item != nullptr && item->menuItemType != QStyleOptionMenuItem::Separator;
}

/// The forms set the sizes of their other push buttons.
bool isBoxButton(const QWidget *widget)
{
    return widget != nullptr && qobject_cast<QDialogButtonBox *>(widget->parentWidget()) != nullptr;
}

/// Whether the widget has the focus, and a key has moved it.
bool showsFocus(const QStyleOption *option)
{
    constexpr QStyle::State kShown = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
    return (option->state & kShown) == kShown;
}

void drawFocus(const QStyleOption *option, QPainter *painter)
{
    painter->save();
    painter->setPen(QPen(QColor(lumi::kFocusRing), 2));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(1, 1, -1, -1));
    painter->restore();
}

QPalette lightPalette()
{
    const QColor window(239, 239, 239);
    const QColor disabledText(190, 190, 190);
    const QColor dark = window.darker(150);
    QPalette palette(Qt::black, window, window.lighter(150), dark, window.darker(130), Qt::black,
                     Qt::white);
    palette.setColor(QPalette::Midlight, window.darker(130).lighter(110));
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::Shadow, dark.darker(135));
    palette.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
    palette.setColor(QPalette::ToolTipText, Qt::black);
    palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    palette.setColor(QPalette::Highlight, lumi::kChosenColor);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, disabledText);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    palette.setColor(QPalette::Disabled, QPalette::Dark, QColor(209, 209, 209).darker(110));
    return palette;
}

} // namespace

lumi::PanelStyle::PanelStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{ }

void lumi::PanelStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                     QPainter *painter, const QWidget *widget) const
{
    if (element == PE_FrameFocusRect) {
        drawFocus(option, painter);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_PanelButtonCommand && showsFocus(option)) {
        drawFocus(option, painter);
    }
}

void lumi::PanelStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                          QPainter *painter, const QWidget *widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox && showsFocus(option)) {
        drawFocus(option, painter);
    }
}

void lumi::PanelStyle::drawControl(ControlElement element, const QStyleOption *option,
                                   QPainter *painter, const QWidget *widget) const
{
    if (element == CE_ToolBar) {
        painter->fillRect(option->rect, option->palette.window());
        element = CE_MenuBarEmptyArea;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_TabBarTabLabel && showsFocus(option)) {
        drawFocus(option, painter);
    }
}

void lumi::PanelStyle::polish(QPalette &palette)
{
    palette = lightPalette();
}

void lumi::PanelStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QScrollBar *>(widget) != nullptr) {
        widget->setAccessibleName(QStringLiteral("Scroll bar"));
    }
}

int lumi::PanelStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const
{
    // No margins: the screen is small, so the bar is just as high as its entries.
    const bool isBarMargin = metric == PM_ToolBarItemMargin || metric == PM_ToolBarFrameWidth
        || metric == PM_MenuBarVMargin || metric == PM_MenuBarPanelWidth;
    return isBarMargin ? 0 : QProxyStyle::pixelMetric(metric, option, widget);
}

QSize lumi::PanelStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &contents, const QWidget *widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_MenuItem && qobject_cast<const QPopupMenu *>(widget) != nullptr) {
        // QMenu reserves room for real shortcuts only.
        size.rwidth()
            += qstyleoption_cast<const QStyleOptionMenuItem *>(option)->reservedShortcutWidth;
    }
    const bool isTarget = (type == CT_MenuItem && isEntry(option)) || type == CT_MenuBarItem
        || type == CT_TabBarTab || (type == CT_PushButton && isBoxButton(widget));
    return isTarget ? size.expandedTo(QSize(kFingerSize, kFingerSize)) : size;
}
