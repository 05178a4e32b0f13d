// SPDX-License-Identifier: MIT
#include "tools/photos/Scene.h"

#include "tools/photos/Brushes.h"
#include "tools/photos/City.h"

#include <array>

namespace lumi::photos {

namespace {

// Zenith, horizon, sun, shade, clouds, glow.
constexpr std::array<Light, 6> kLights{{
    // noon
    {{0.16F, 0.37F, 0.70F},
     {0.66F, 0.81F, 0.93F},
     {1.00F, 0.97F, 0.88F},
     {0.20F, 0.25F, 0.36F},
     0.45F,
     0.3F},
    // clear morning
    {{0.27F, 0.47F, 0.74F},
     {0.93F, 0.84F, 0.74F},
     {1.00F, 0.86F, 0.62F},
     {0.24F, 0.27F, 0.40F},
     0.2F,
     0.6F},
    // sunset
    {{0.22F, 0.25F, 0.47F},
     {0.98F, 0.58F, 0.33F},
     {1.00F, 0.72F, 0.36F},
     {0.17F, 0.13F, 0.24F},
     0.55F,
     0.75F},
    // after sunset
    {{0.10F, 0.12F, 0.32F},
     {0.82F, 0.46F, 0.52F},
     {0.98F, 0.55F, 0.42F},
     {0.08F, 0.07F, 0.17F},
     0.4F,
     0.55F},
    // overcast
    {{0.52F, 0.58F, 0.64F},
     {0.78F, 0.81F, 0.83F},
     {0.86F, 0.86F, 0.84F},
     {0.25F, 0.28F, 0.31F},
     0.85F,
     0.0F},
    // high summer
    {{0.10F, 0.30F, 0.66F},
     {0.55F, 0.77F, 0.94F},
     {1.00F, 0.98F, 0.93F},
     {0.15F, 0.21F, 0.34F},
     0.3F,
     0.25F},
}};

constexpr std::array<Color, 4> kMeadows{{
    {0.33F, 0.45F, 0.18F},
    {0.42F, 0.47F, 0.20F},
    {0.47F, 0.40F, 0.19F},
    {0.25F, 0.40F, 0.19F},
}};

Sky makeSky(const Canvas &canvas, float horizon, Random &random)
{
    Sky sky;
    sky.light = kLights[static_cast<std::size_t>(random.pick(static_cast<int>(kLights.size())))];
    sky.horizon = horizon;
    const float across = canvas.unitWidth() * random.range(0.18F, 0.82F);
    const float down = horizon * random.range(0.25F, 0.85F);
    // By full day the photographer has the sun behind or above.
    const bool inView = sky.light.glow > 0.5F;
    sky.sun = {across, inView ? down : -0.6F};
    sky.sunRadius = random.range(0.018F, 0.04F);
    return sky;
}

void paintRange(Canvas &canvas, const Sky &sky, float foot, Random &random)
{
    constexpr int kRidges = 4;
    const bool snow = random.pick(3) > 0;
    for (int i = 0; i < kRidges; ++i) {
        const float near = static_cast<float>(i) / static_cast<float>(kRidges - 1);
        Ridge ridge;
        ridge.base = foot + near * 0.08F;
        ridge.bottom = ridge.base + 0.12F;
        ridge.height = (0.86F - 0.62F * near) * random.range(0.8F, 1.1F) * foot;
        ridge.wavelength = random.range(0.45F, 0.9F) * (1.2F - 0.4F * near);
        ridge.haze = 0.46F * (1.0F - near) * (1.0F - near) + 0.06F;
        ridge.snowLine = snow && i < 2 ? foot - ridge.height * random.range(0.25F, 0.45F) : -1.0F;
        ridge.ground = mix({0.33F, 0.36F, 0.42F}, {0.20F, 0.27F, 0.18F}, near);
        paintRidge(canvas, ridge, sky, random);
    }
}

void paintConifers(Canvas &canvas, float base, float height, Random &random)
{
    Trees trees;
    trees.base = base;
    trees.height = height;
    trees.width = height * 0.36F;
    trees.count = 4.2F / trees.width;
    trees.pointed = true;
    trees.dark = {0.03F, 0.06F, 0.05F};
    trees.lit = {0.16F, 0.25F, 0.13F};
    paintTrees(canvas, trees, random);
}

void paintMeadow(Canvas &canvas, const Sky &sky, float top, Random &random)
{
    Ridge meadow;
    meadow.base = top + 0.04F;
    meadow.height = 0.08F;
    meadow.wavelength = 1.2F;
    meadow.smoothness = 0.55F;
    meadow.ground
        = kMeadows[static_cast<std::size_t>(random.pick(static_cast<int>(kMeadows.size())))];
    paintRidge(canvas, meadow, sky, random);
}

void paintMountains(Canvas &canvas, Random &random)
{
    const float foot = random.range(0.62F, 0.74F);
    const Sky sky = makeSky(canvas, foot, random);
    paintSky(canvas, sky, random);
    paintRange(canvas, sky, foot, random);
    paintMeadow(canvas, sky, foot + 0.09F, random);
    if (random.pick(2) == 0) {
        paintConifers(canvas, random.range(0.96F, 1.06F), random.range(0.16F, 0.3F), random);
    }
}

void paintLake(Canvas &canvas, Random &random)
{
    const float shore = random.range(0.5F, 0.62F);
    const Sky sky = makeSky(canvas, shore, random);
    paintSky(canvas, sky, random);
    paintRange(canvas, sky, shore - 0.02F, random);
    paintConifers(canvas, shore + 0.03F, random.range(0.05F, 0.1F), random);
    paintWater(canvas, {shore + 0.01F, random.range(0.05F, 0.25F), sky.light.shade}, sky, random);
}

void paintSea(Canvas &canvas, Random &random)
{
    const float horizon = random.range(0.42F, 0.58F);
    const Sky sky = makeSky(canvas, horizon, random);
    paintSky(canvas, sky, random);
    if (random.pick(2) == 0) {
        Ridge coast;
        coast.base = horizon + 0.01F;
        coast.bottom = horizon + 0.02F;
        coast.height = random.range(0.04F, 0.12F);
        coast.wavelength = random.range(0.5F, 1.0F);
        coast.haze = 0.5F;
        coast.ground = {0.20F, 0.24F, 0.28F};
        paintRidge(canvas, coast, sky, random);
    }
    const Color depth = mix(sky.light.shade, {0.05F, 0.27F, 0.33F}, 0.55F);
    paintWater(canvas, {horizon, random.range(0.6F, 1.0F), depth}, sky, random);
}

void paintDunes(Canvas &canvas, Random &random)
{
    const float horizon = random.range(0.4F, 0.5F);
    const Sky sky = makeSky(canvas, horizon, random);
    paintSky(canvas, sky, random);
    constexpr int kDunes = 5;
    for (int i = 0; i < kDunes; ++i) {
        const float near = static_cast<float>(i) / static_cast<float>(kDunes - 1);
        Ridge dune;
        dune.base = horizon + 0.08F + near * 0.42F;
        dune.bottom = i + 1 < kDunes ? dune.base + 0.14F : 1.0F;
        dune.height = 0.12F + 0.16F * near;
        dune.wavelength = random.range(0.5F, 0.8F) * (0.6F + near);
        dune.haze = 0.5F * (1.0F - near) * (1.0F - near);
        dune.smoothness = 1.0F;
        dune.ground = mix({0.80F, 0.62F, 0.42F}, {0.72F, 0.47F, 0.25F}, near);
        paintRidge(canvas, dune, sky, random);
    }
}

void paintForest(Canvas &canvas, Random &random)
{
    const float edge = random.range(0.5F, 0.6F);
    const Sky sky = makeSky(canvas, edge, random);
    paintSky(canvas, sky, random);
    const bool autumn = random.pick(2) == 0;
    constexpr int kRows = 4;
    for (int i = 0; i < kRows; ++i) {
        const float near = static_cast<float>(i) / static_cast<float>(kRows - 1);
        Trees trees;
        trees.base = edge + 0.01F + near * near * 0.24F;
        trees.bottom = trees.base + 0.16F;
        trees.height = 0.08F + 0.26F * near * near;
        trees.width = trees.height * random.range(0.55F, 0.8F);
        trees.count = (2.6F - 1.9F * near) / trees.width;
        const Color leaves = autumn
            ? mix({0.72F, 0.42F, 0.12F}, {0.80F, 0.58F, 0.16F}, random.unit())
            : mix({0.28F, 0.45F, 0.14F}, {0.20F, 0.36F, 0.12F}, random.unit());
        trees.lit = mix(mix(leaves, sky.light.sun, 0.12F), sky.light.horizon, 0.5F * (1.0F - near));
        trees.dark = mix(leaves * 0.28F, sky.light.horizon, 0.42F * (1.0F - near));
        paintTrees(canvas, trees, random);
    }
    paintMeadow(canvas, sky, edge + 0.27F, random);
}

} // namespace

Canvas paintScene(SceneKind kind, QSize photo, std::uint64_t seed)
{
    using Painter = void (*)(Canvas &, Random &);
    constexpr std::array<Painter, kSceneKinds> kPainters{
        paintMountains, paintLake, paintSea, paintDunes, paintForest, paintCity,
    };
    Canvas canvas(photo);
    Random random(seed * 8U + static_cast<std::uint64_t>(kind));
    kPainters[static_cast<std::size_t>(kind)](canvas, random);
    paintVignette(canvas, 0.28F);
    return canvas;
}

} // namespace lumi::photos
