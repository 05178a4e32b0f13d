// SPDX-License-Identifier: MIT
// The float picture that a scene is painted on, from far to near. It is small (at most
// kLongestSide pixels a side); toImage() brings it to the size of the photo and adds the
// grain of a sensor, without which the photo would compress to a tenth of a real one.
#pragma once

#include <QImage>
#include <QSize>

#include <vector>

namespace lumi::photos {

/// Light in 0 to 1 a channel; sums above 1 are cut off when the image is made.
struct Color
{
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
};

[[nodiscard]] inline Color operator*(Color color, float factor)
{
    return {color.r * factor, color.g * factor, color.b * factor};
}

[[nodiscard]] inline Color operator+(Color one, Color other)
{
    return {one.r + other.r, one.g + other.g, one.b + other.b};
}

/// part 0 gives from, 1 gives to; outside of that it is cut off.
[[nodiscard]] Color mix(Color from, Color to, float part);

/// 0 below low, 1 above high, smooth between.
[[nodiscard]] float smoothStep(float low, float high, float value);

class Canvas
{
public:
    static constexpr int kLongestSide = 1100;

    /// As large as the photo, or in its proportions with kLongestSide on the longer side.
    explicit Canvas(QSize photo);

    [[nodiscard]] int width() const { return m_width; }

    [[nodiscard]] int height() const { return m_height; }

    [[nodiscard]] Color &at(int x, int y);
    [[nodiscard]] const Color &at(int x, int y) const;
    /// Column x in units of the picture's height, so that shapes keep their proportions.
    [[nodiscard]] float unitX(int x) const;
    [[nodiscard]] float unitY(int y) const;
    /// The picture's width in units of its height.
    [[nodiscard]] float unitWidth() const;

    /// grain: the strongest change of a channel, in its 256 steps.
    [[nodiscard]] QImage toImage(QSize photo, unsigned seed, int grain) const;

private:
    int m_width;
    int m_height;
    std::vector<Color> m_pixels;
};

} // namespace lumi::photos
