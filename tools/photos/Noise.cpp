// SPDX-License-Identifier: MIT
#include "tools/photos/Noise.h"

#include <cmath>

namespace lumi::photos {

std::uint32_t Random::next()
{
    m_state += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return static_cast<std::uint32_t>(mixed >> 32U);
}

float Random::unit()
{
    return static_cast<float>(next() >> 8U) / 16777216.0F;
}

float Random::range(float low, float high)
{
    return low + (high - low) * unit();
}

int Random::pick(int count)
{
    return static_cast<int>(next() % static_cast<std::uint32_t>(count));
}

float Noise::lattice(int x, int y) const
{
    std::uint32_t hash = m_seed;
    hash ^= static_cast<std::uint32_t>(x) * 0x85EBCA6BU;
    hash ^= static_cast<std::uint32_t>(y) * 0xC2B2AE35U;
    hash = (hash ^ (hash >> 15U)) * 0x2C1B3C6DU;
    hash = (hash ^ (hash >> 12U)) * 0x297A2D39U;
    hash ^= hash >> 15U;
    return static_cast<float>(hash >> 8U) / 16777216.0F;
}

float Noise::at(float x, float y) const
{
    const float left = std::floor(x);
    const float top = std::floor(y);
    const int column = static_cast<int>(left);
    const int row = static_cast<int>(top);
    const float across = x - left;
    const float down = y - top;
    const float smoothAcross = across * across * (3.0F - 2.0F * across);
    const float smoothDown = down * down * (3.0F - 2.0F * down);
    const float above
        = lattice(column, row) + (lattice(column + 1, row) - lattice(column, row)) * smoothAcross;
    const float below = lattice(column, row + 1)
        + (lattice(column + 1, row + 1) - lattice(column, row + 1)) * smoothAcross;
    return above + (below - above) * smoothDown;
}

float Noise::layered(float x, float y, int octaves) const
{
    float sum = 0.0F;
    float weight = 0.5F;
    float total = 0.0F;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * at(x, y);
        total += weight;
        weight *= 0.5F;
        // The offset keeps the lattices of two octaves from lying on each other.
        x = x * 2.03F + 17.0F;
        y = y * 2.03F + 31.0F;
    }
    return sum / total;
}

float Noise::ridged(float x, float y, int octaves) const
{
    float sum = 0.0F;
    float weight = 0.5F;
    float total = 0.0F;
    for (int i = 0; i < octaves; ++i) {
        const float crest = 1.0F - std::fabs(2.0F * at(x, y) - 1.0F);
        sum += weight * crest * crest;
        total += weight;
        weight *= 0.5F;
        x = x * 2.07F + 11.0F;
        y = y * 2.07F + 23.0F;
    }
    return sum / total;
}

} // namespace lumi::photos
