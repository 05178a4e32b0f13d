// SPDX-License-Identifier: MIT
#include "tools/photos/Canvas.h"

#include <algorithm>
#include <cmath>

namespace lumi::photos {

namespace {

int toByte(float channel)
{
    return static_cast<int>(std::lround(std::clamp(channel, 0.0F, 1.0F) * 255.0F));
}

unsigned scramble(unsigned value)
{
    value = (value ^ (value >> 16U)) * 0x7FEB352DU;
    value = (value ^ (value >> 15U)) * 0x846CA68BU;
    return value ^ (value >> 16U);
}

QRgb withGrain(QRgb pixel, int change)
{
    return qRgb(std::clamp(qRed(pixel) + change, 0, 255),
                std::clamp(qGreen(pixel) + change, 0, 255),
                std::clamp(qBlue(pixel) + change, 0, 255));
}

void addGrain(QImage &image, unsigned seed, int grain)
{
    const unsigned steps = static_cast<unsigned>(grain) * 2U + 1U;
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        const unsigned row = scramble(seed + static_cast<unsigned>(y));
        for (int x = 0; x < image.width(); ++x) {
            const unsigned chance = scramble(row + static_cast<unsigned>(x));
            line[x] = withGrain(line[x], static_cast<int>(chance % steps) - grain);
        }
    }
}

} // namespace

Color mix(Color from, Color to, float part)
{
    part = std::clamp(part, 0.0F, 1.0F);
    return from * (1.0F - part) + to * part;
}

float smoothStep(float low, float high, float value)
{
    const float part = std::clamp((value - low) / (high - low), 0.0F, 1.0F);
    return part * part * (3.0F - 2.0F * part);
}

Canvas::Canvas(QSize photo)
{
    const QSize most(kLongestSide, kLongestSide);
    const bool large = photo.width() > kLongestSide || photo.height() > kLongestSide;
    const QSize size = large ? photo.scaled(most, Qt::KeepAspectRatio) : photo;
    m_width = std::max(size.width(), 1);
    m_height = std::max(size.height(), 1);
    m_pixels.resize(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height));
}

Color &Canvas::at(int x, int y)
{
    return m_pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width)
                    + static_cast<std::size_t>(x)];
}

const Color &Canvas::at(int x, int y) const
{
    return m_pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width)
                    + static_cast<std::size_t>(x)];
}

float Canvas::unitX(int x) const
{
    return static_cast<float>(x) / static_cast<float>(m_height);
}

float Canvas::unitY(int y) const
{
    return static_cast<float>(y) / static_cast<float>(m_height);
}

float Canvas::unitWidth() const
{
    return unitX(m_width);
}

QImage Canvas::toImage(QSize photo, unsigned seed, int grain) const
{
    QImage image(m_width, m_height, QImage::Format_RGB32);
    for (int y = 0; y < m_height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < m_width; ++x) {
            const Color &color = at(x, y);
            line[x] = qRgb(toByte(color.r), toByte(color.g), toByte(color.b));
        }
    }
    if (image.size() != photo) {
        image = image.scaled(photo, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        image = image.convertToFormat(QImage::Format_RGB32);
    }
    if (grain > 0) {
        addGrain(image, seed, grain);
    }
    return image;
}

} // namespace lumi::photos
