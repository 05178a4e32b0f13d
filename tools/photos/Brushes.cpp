// SPDX-License-Identifier: MIT
#include "tools/photos/Brushes.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace lumi::photos {

namespace {

float distance(Place one, Place other)
{
    return std::hypot(one.x - other.x, one.y - other.y);
}

Color skyColor(const Sky &sky, Place place)
{
    const float down = std::clamp(place.y / std::max(sky.horizon, 0.01F), 0.0F, 1.0F);
    Color color = mix(sky.light.zenith, sky.light.horizon, std::pow(down, 1.4F));
    const float away = distance(place, sky.sun);
    const float glow = 0.7F * std::exp(-away * 4.0F) + 0.5F * std::exp(-away * 18.0F);
    color = color + sky.light.sun * (glow * sky.light.glow);
    const float disc = 1.0F - smoothStep(sky.sunRadius * 0.85F, sky.sunRadius * 1.1F, away);
    return color + sky.light.sun * disc;
}

/// 0 clear sky, 1 the middle of a cloud. Clouds shrink towards the horizon.
float cloudAt(const Sky &sky, const Noise &noise, Place place)
{
    const float down = std::clamp(place.y / std::max(sky.horizon, 0.01F), 0.0F, 0.97F);
    const float far = 1.0F / (1.0F - down * 0.93F);
    const float density = noise.layered(place.x * 1.5F * (0.55F + far * 0.45F), far * 2.6F, 6);
    const float threshold = 0.72F - 0.42F * sky.light.clouds;
    return smoothStep(threshold, threshold + 0.2F, density) * (1.0F - 0.5F * down);
}

Color cloudColor(const Sky &sky, const Noise &noise, Place place, float density)
{
    const float below = cloudAt(sky, noise, {place.x + 0.01F, place.y - 0.03F});
    const Color lit = sky.light.sun * 0.72F + Color{0.26F, 0.26F, 0.27F};
    const Color dark = mix(sky.light.shade, sky.light.horizon, 0.55F);
    const float nearSun = std::exp(-distance(place, sky.sun) * 2.6F);
    return mix(mix(lit, dark, below * density * 0.9F), sky.light.sun * 1.05F,
               nearSun * sky.light.glow * 0.7F);
}

/// The first row that lies wholly below y, at most the height of the canvas.
int rowBelow(const Canvas &canvas, float y)
{
    return std::clamp(static_cast<int>(y * static_cast<float>(canvas.height())) + 1, 0,
                      canvas.height());
}

float treeHeight(const Trees &trees, float reach)
{
    return trees.pointed ? 1.0F - reach : std::sqrt(std::max(0.0F, 1.0F - reach * reach));
}

/// The part of a pixel in row v that lies below an edge at top.
float coverage(const Canvas &canvas, float v, float top)
{
    return std::clamp((v - top) * static_cast<float>(canvas.height()), 0.0F, 1.0F);
}

Color skyAndCloud(const Sky &sky, const Noise &noise, Place place)
{
    const Color color = skyColor(sky, place);
    if (sky.light.clouds <= 0.0F || place.y >= sky.horizon) {
        return color;
    }
    const float density = cloudAt(sky, noise, place);
    return mix(color, cloudColor(sky, noise, place, density), density * 0.95F);
}

struct Slope
{
    Place place;
    float top = 0.0F;    ///< the crest above
    float relief = 0.0F; ///< of the noise, 0 to 1
};

Color slopeColor(const Ridge &ridge, const Light &light, const Slope &slope)
{
    const float below = slope.place.y - slope.top;
    const float rough = (slope.relief - 0.5F) * (2.2F - ridge.smoothness * 1.6F);
    const float lit = std::clamp(0.7F + rough - 0.7F * below, 0.0F, 1.0F);
    Color color = mix(mix(light.shade, ridge.ground, 0.35F), ridge.ground + light.sun * 0.16F, lit);
    if (ridge.snowLine > 0.0F) {
        const Color shaded = mix({0.55F, 0.62F, 0.78F}, light.shade, 0.2F);
        const Color sunlit = Color{0.8F, 0.8F, 0.82F} + light.sun * 0.2F;
        const float height = slope.place.y + (slope.relief - 0.5F) * 0.3F;
        const float snow = smoothStep(ridge.snowLine + 0.07F, ridge.snowLine - 0.05F, height);
        color = mix(color, mix(shaded, sunlit, lit), snow);
    }
    return mix(color, light.horizon, ridge.haze * (1.0F + 0.9F * below));
}

float crestOf(const Ridge &ridge, const Noise &noise, float across)
{
    constexpr float kCut = 5.0F;
    const float crest
        = ridge.smoothness > 0.5F ? noise.layered(across, kCut, 2) : noise.ridged(across, kCut, 7);
    return ridge.base - ridge.height * crest;
}

struct Tree
{
    float middle = 0.0F;
    float scale = 0.0F; ///< of the size of its kind
};

/// Raises the treeline where the tree stands higher.
void addTree(const Canvas &canvas, const Trees &trees, Tree tree, std::vector<float> &line)
{
    const Noise leaves(static_cast<std::uint32_t>(tree.middle * 4096.0F));
    const auto perUnit = static_cast<float>(canvas.height());
    const float half = trees.width * tree.scale * 0.5F;
    const int first = std::max(0, static_cast<int>((tree.middle - half) * perUnit));
    const int last = std::min(canvas.width() - 1, static_cast<int>((tree.middle + half) * perUnit));
    for (int x = first; x <= last; ++x) {
        const float reach = std::min(std::fabs(canvas.unitX(x) - tree.middle) / half, 1.0F);
        const float ragged = 1.0F - 0.28F * leaves.at(canvas.unitX(x) * 190.0F, 0.5F);
        const float height = trees.height * tree.scale * treeHeight(trees, reach) * ragged;
        auto &here = line[static_cast<std::size_t>(x)];
        here = std::min(here, trees.base - 0.02F - height);
    }
}

/// The y of the treeline over each column.
std::vector<float> treeLine(const Canvas &canvas, const Trees &trees, Random &random)
{
    const Noise ground(random.next());
    std::vector<float> line(static_cast<std::size_t>(canvas.width()));
    for (int x = 0; x < canvas.width(); ++x) {
        line[static_cast<std::size_t>(x)]
            = trees.base - 0.05F * ground.layered(canvas.unitX(x) * 1.6F, 3.0F, 3);
    }
    const int count = static_cast<int>(trees.count * canvas.unitWidth());
    for (int i = 0; i < count; ++i) {
        const float middle = random.unit() * canvas.unitWidth();
        addTree(canvas, trees, {middle, random.range(0.55F, 1.0F)}, line);
    }
    return line;
}

/// The water at a place below the horizon, from what stands above it.
Color waterColor(const Canvas &canvas, const Water &water, const Sky &sky, Place place, float wave)
{
    const auto perUnit = static_cast<float>(canvas.height());
    const float below = place.y - water.horizon;
    const float shift = wave * water.roughness * (0.06F + below * 0.9F);
    const int horizon = static_cast<int>(water.horizon * perUnit);
    const int row = std::clamp(horizon - 1 - static_cast<int>((below + shift) * perUnit), 0,
                               std::max(horizon - 1, 0));
    const int column
        = std::clamp(static_cast<int>(place.x * perUnit + shift * 40.0F), 0, canvas.width() - 1);
    const float mirror = 0.82F - 0.5F * std::min(below * 1.4F, 1.0F) * (0.4F + water.roughness);
    const Color color = mix(water.depth, canvas.at(column, row), mirror + wave * 0.5F);
    const float path = std::exp(-std::fabs(place.x - sky.sun.x) / (0.03F + below * 0.28F));
    const float spark = smoothStep(0.1F, 0.3F, wave * (0.6F + water.roughness));
    return color + sky.light.sun * (path * spark * 0.75F);
}

} // namespace

void paintSky(Canvas &canvas, const Sky &sky, Random &random)
{
    const Noise noise(random.next());
    const int bottom = rowBelow(canvas, sky.horizon + 0.15F);
    for (int y = 0; y < bottom; ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            canvas.at(x, y) = skyAndCloud(sky, noise, {canvas.unitX(x), canvas.unitY(y)});
        }
    }
}

void paintRidge(Canvas &canvas, const Ridge &ridge, const Sky &sky, Random &random)
{
    const Noise noise(random.next());
    const float frequency = 1.0F / ridge.wavelength;
    const int bottom = rowBelow(canvas, ridge.bottom);
    const float sunSide = sky.sun.x > canvas.unitWidth() * 0.5F ? 1.0F : -1.0F;
    for (int x = 0; x < canvas.width(); ++x) {
        const float across = canvas.unitX(x) * frequency;
        const float top = crestOf(ridge, noise, across);
        const int first = std::max(0, rowBelow(canvas, top) - 1);
        for (int y = first; y < bottom; ++y) {
            const float v = canvas.unitY(y);
            const float relief
                = noise.layered(across * 4.0F + v * 3.0F * sunSide, v * frequency * 5.0F, 5);
            const Color color = slopeColor(ridge, sky.light, {{canvas.unitX(x), v}, top, relief});
            canvas.at(x, y) = mix(canvas.at(x, y), color, coverage(canvas, v, top));
        }
    }
}

void paintTrees(Canvas &canvas, const Trees &trees, Random &random)
{
    const Noise noise(random.next());
    const std::vector<float> line = treeLine(canvas, trees, random);
    const int bottom = rowBelow(canvas, trees.bottom);
    for (int x = 0; x < canvas.width(); ++x) {
        const float top = line[static_cast<std::size_t>(x)];
        const int first = std::max(0, rowBelow(canvas, top) - 1);
        for (int y = first; y < bottom; ++y) {
            const float v = canvas.unitY(y);
            const float leaves = noise.layered(canvas.unitX(x) * 60.0F, v * 60.0F, 3);
            const float lit = std::clamp((leaves - 0.35F) * 2.2F - (v - top) * 2.0F, 0.0F, 1.0F);
            canvas.at(x, y)
                = mix(canvas.at(x, y), mix(trees.dark, trees.lit, lit), coverage(canvas, v, top));
        }
    }
}

void paintWater(Canvas &canvas, const Water &water, const Sky &sky, Random &random)
{
    const Noise noise(random.next());
    for (int y = std::max(rowBelow(canvas, water.horizon) - 1, 1); y < canvas.height(); ++y) {
        const float v = canvas.unitY(y);
        const float far = 1.0F / (std::max(v - water.horizon, 0.0F) * 6.0F + 0.045F);
        for (int x = 0; x < canvas.width(); ++x) {
            const float u = canvas.unitX(x);
            const float wave = noise.layered(u * (2.0F + far * 1.2F), far * 5.0F, 4) - 0.5F;
            canvas.at(x, y) = waterColor(canvas, water, sky, {u, v}, wave);
        }
    }
}

void paintVignette(Canvas &canvas, float strength)
{
    const Place middle{canvas.unitWidth() * 0.5F, 0.5F};
    const float corner = distance(middle, {0.0F, 0.0F});
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            const float away = distance(middle, {canvas.unitX(x), canvas.unitY(y)}) / corner;
            canvas.at(x, y) = canvas.at(x, y) * (1.0F - strength * away * away * away);
        }
    }
}

} // namespace lumi::photos
