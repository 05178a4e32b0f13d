// SPDX-License-Identifier: MIT
// What the scenes have in common: sky with sun and clouds, ridges in the haze, rows of
// trees, still water. Each is painted over all that lies behind it. Lengths and places are
// in units of the picture's height, y downwards from its top.
#pragma once

#include "tools/photos/Canvas.h"
#include "tools/photos/Noise.h"

namespace lumi::photos {

struct Light
{
    Color zenith;
    Color horizon;
    Color sun;
    /// What the shaded side of everything takes on.
    Color shade;
    /// The share of the sky that clouds take, 0 to 1.
    float clouds = 0.0F;
    /// How far the sky about the sun shines with it, 0 to 1.
    float glow = 0.0F;
};

struct Place
{
    float x = 0.0F;
    float y = 0.0F;
};

struct Sky
{
    Light light;
    Place sun;
    float sunRadius = 0.0F;
    float horizon = 0.0F;
};

struct Ridge
{
    float base = 0.0F;   ///< the y its foot stands at
    float bottom = 1.0F; ///< nothing is painted below: what comes next covers it
    float height = 0.0F;
    float wavelength = 1.0F; ///< the distance from crest to crest
    float haze = 0.0F;       ///< 0 near and clear, 1 lost in the air
    float snowLine = -1.0F;  ///< snow lies above this y; -1 none
    float smoothness = 0.0F; ///< 0 rock, 1 dune
    Color ground;
};

struct Trees
{
    float base = 0.0F;   ///< the mean y of their feet
    float bottom = 1.0F; ///< as in Ridge
    float height = 0.0F;
    float width = 0.0F;   ///< of one tree
    float count = 0.0F;   ///< trees to each unit of width
    bool pointed = false; ///< conifers; else round crowns
    Color dark;
    Color lit;
};

struct Water
{
    float horizon = 0.0F;
    float roughness = 0.0F; ///< 0 a mirror, 1 an open sea
    Color depth;
};

/// Down to a little below the horizon.
void paintSky(Canvas &canvas, const Sky &sky, Random &random);
void paintRidge(Canvas &canvas, const Ridge &ridge, const Sky &sky, Random &random);
void paintTrees(Canvas &canvas, const Trees &trees, Random &random);
/// Mirrors what has been painted above the horizon.
void paintWater(Canvas &canvas, const Water &water, const Sky &sky, Random &random);
void paintVignette(Canvas &canvas, float strength);

} // namespace lumi::photos
