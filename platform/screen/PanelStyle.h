// SPDX-License-Identifier: MIT
// The program's style on every platform: Fusion with larger targets for fingers and pens (entries
// of menus and menu bars, tabs, buttons of message boxes), tool bars that look like the menu bars in
// them, and a dark frame around the widget with the keyboard focus. Its colours are fixed, because
// the program's pictures are drawn for them: a light palette with an orange highlight, also on a
// dark desktop.
#pragma once

#include <QProxyStyle>

namespace lumi {

class PanelStyle : public QProxyStyle
{
    Q_OBJECT

public:
    PanelStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    using QProxyStyle::polish;
    void polish(QPalette &palette) override;
    /// Names scroll bars for screen readers.
    void polish(QWidget *widget) override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &contents,
                                         const QWidget *widget) const override;
};

} // namespace lumi
