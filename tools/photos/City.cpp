// SPDX-License-Identifier: MIT
#include "tools/photos/City.h"

#include "tools/photos/Brushes.h"

#include <algorithm>
#include <array>

namespace lumi::photos {

namespace {

struct House
{
    float left = 0.0F;
    float width = 0.0F;
    float top = 0.0F;
    Color wall;
    float lit = 0.0F; ///< the share of windows with light
    unsigned seed = 0;
};

constexpr std::array<Color, 4> kLamps{{
    {1.00F, 0.82F, 0.46F},
    {1.00F, 0.90F, 0.66F},
    {0.80F, 0.90F, 1.00F},
    {1.00F, 0.66F, 0.30F},
}};

int toPixel(const Canvas &canvas, float unit)
{
    return static_cast<int>(unit * static_cast<float>(canvas.height()));
}

constexpr float kStorey = 0.0165F;
constexpr float kBay = 0.0125F;

void paintWindow(Canvas &canvas, float left, float top, Color light)
{
    const int right = std::min(toPixel(canvas, left + kBay * 0.55F), canvas.width() - 1);
    const int bottom = std::min(toPixel(canvas, top + kStorey * 0.55F), canvas.height() - 1);
    for (int y = std::max(toPixel(canvas, top), 0); y <= bottom; ++y) {
        for (int x = std::max(toPixel(canvas, left), 0); x <= right; ++x) {
            canvas.at(x, y) = light;
        }
    }
}

void paintWindows(Canvas &canvas, const House &house, float bottom)
{
    Random random(house.seed);
    const int storeys = static_cast<int>((bottom - house.top) / kStorey) - 1;
    const int bays = static_cast<int>(house.width / kBay - 0.6F);
    for (int i = 0; i < storeys * bays; ++i) {
        const bool lit = random.unit() < house.lit;
        const auto lamp = static_cast<std::size_t>(random.pick(static_cast<int>(kLamps.size())));
        const float strength = random.range(0.55F, 1.1F);
        if (lit) {
            const int storey = i / bays;
            const int bay = i % bays;
            const float left = house.left + kBay * (0.6F + static_cast<float>(bay));
            const float top = house.top + kStorey * (1.0F + static_cast<float>(storey));
            paintWindow(canvas, left, top, kLamps[lamp] * strength);
        }
    }
}

void paintHouse(Canvas &canvas, const House &house, float bottom)
{
    const int left = std::max(toPixel(canvas, house.left), 0);
    const int right = std::min(toPixel(canvas, house.left + house.width), canvas.width());
    const int low = std::min(toPixel(canvas, bottom), canvas.height());
    for (int y = std::max(toPixel(canvas, house.top), 0); y < low; ++y) {
        const float down = (canvas.unitY(y) - house.top) / (bottom - house.top);
        for (int x = left; x < right; ++x) {
            canvas.at(x, y) = house.wall * (0.75F + 0.5F * down);
        }
    }
    paintWindows(canvas, house, bottom);
}

void paintRow(Canvas &canvas, float bottom, float tallest, float haze, Random &random)
{
    float left = -0.05F;
    while (left < canvas.unitWidth()) {
        House house;
        house.left = left;
        house.width = random.range(0.07F, 0.16F);
        const float unit = random.unit();
        house.top = bottom - tallest * (0.3F + 0.7F * unit * unit);
        house.wall = mix({0.055F, 0.06F, 0.09F}, {0.22F, 0.17F, 0.25F}, haze);
        house.lit = random.range(0.12F, 0.45F) * (1.0F - 0.4F * haze);
        house.seed = random.next();
        paintHouse(canvas, house, bottom);
        left += house.width + random.range(-0.02F, 0.02F);
    }
}

void paintStars(Canvas &canvas, float horizon, Random &random)
{
    const int stars = static_cast<int>(160.0F * canvas.unitWidth());
    for (int i = 0; i < stars; ++i) {
        const int x = random.pick(canvas.width());
        const int y = random.pick(std::max(toPixel(canvas, horizon), 1));
        canvas.at(x, y) = canvas.at(x, y) + Color{0.8F, 0.82F, 0.9F} * random.range(0.1F, 0.8F);
    }
}

} // namespace

void paintCity(Canvas &canvas, Random &random)
{
    const float shore = random.range(0.62F, 0.7F);
    Sky sky;
    sky.light = {{0.015F, 0.025F, 0.075F},
                 {0.30F, 0.18F, 0.24F},
                 {0.93F, 0.90F, 0.80F},
                 {0.03F, 0.03F, 0.07F},
                 0.0F,
                 0.18F};
    sky.horizon = shore;
    sky.sun = {canvas.unitWidth() * random.range(0.15F, 0.85F), random.range(0.08F, 0.22F)};
    sky.sunRadius = random.range(0.02F, 0.035F);
    paintSky(canvas, sky, random);
    paintStars(canvas, shore * 0.7F, random);
    paintRow(canvas, shore, random.range(0.42F, 0.52F), 0.7F, random);
    paintRow(canvas, shore, random.range(0.3F, 0.4F), 0.25F, random);
    paintRow(canvas, shore, random.range(0.14F, 0.2F), 0.0F, random);
    paintWater(canvas, {shore, random.range(0.25F, 0.5F), {0.02F, 0.03F, 0.06F}}, sky, random);
}

} // namespace lumi::photos
