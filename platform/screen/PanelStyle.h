// SPDX-License-Identifier: MIT
// The program's style: the default style with larger targets for fingers and pens (entries of
// menus and menu bars, tabs, buttons of message boxes), an orange highlight, and tool bars that
// look like the menu bars in them.
#pragma once

#include <QProxyStyle>

namespace lumi {

class PanelStyle : public QProxyStyle
{
    Q_OBJECT

public:
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    using QProxyStyle::polish;
    void polish(QPalette &palette) override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &contents,
                                         const QWidget *widget) const override;
};

} // namespace lumi
