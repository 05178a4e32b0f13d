// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace lumi::test {

/// Relative luminance of sRGB, 0 to 1, as the Web Content Accessibility Guidelines define it.
[[nodiscard]] inline double luminance(const QColor &color)
{
    const auto linear = [](float channel) {
        const auto value = static_cast<double>(channel);
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

/// Contrast ratio of two colours, 1 to 21, by the same guidelines.
[[nodiscard]] inline double contrast(const QColor &one, const QColor &other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace lumi::test
