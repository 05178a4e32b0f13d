// SPDX-License-Identifier: MIT
// Sizes for fingers and pens: makes the entries of menus and menu bars, tabs, and the buttons of
// message boxes, as high as a fingertip needs, and shows what is chosen in the program's orange.
// Tool bars are as plain as the menu bars that stand in them.
// Everything else is the usual style's.
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
