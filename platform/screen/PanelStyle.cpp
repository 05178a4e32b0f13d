// SPDX-License-Identifier: MIT
#include "platform/screen/PanelStyle.h"

#include "platform/screen/panel.h"

#include <QDialogButtonBox>
#include <QPainter>
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

} // namespace

void lumi::PanelStyle::drawControl(ControlElement element, const QStyleOption *option,
                                   QPainter *painter, const QWidget *widget) const
{
    if (element == CE_ToolBar) {
        painter->fillRect(option->rect, option->palette.window());
        element = CE_MenuBarEmptyArea;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void lumi::PanelStyle::polish(QPalette &palette)
{
    QProxyStyle::polish(palette);
    palette.setColor(QPalette::Highlight, kChosenColor);
    palette.setColor(QPalette::HighlightedText, Qt::black);
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
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    const bool isTarget = (type == CT_MenuItem && isEntry(option)) || type == CT_MenuBarItem
        || type == CT_TabBarTab || (type == CT_PushButton && isBoxButton(widget));
    return isTarget ? size.expandedTo(QSize(0, kFingerSize)) : size;
}
