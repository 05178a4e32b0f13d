// SPDX-License-Identifier: MIT
// Random numbers and smooth noise that are the same on every machine for the same seed, so
// that a sample photo is the same file wherever it is made. The standard library's
// distributions are not: they may differ between implementations.
#pragma once

#include <cstdint>

namespace lumi::photos {

class Random
{
public:
    explicit Random(std::uint64_t seed)
        : m_state(seed)
    { }

    std::uint32_t next();
    /// 0 up to, not including, 1.
    float unit();
    float range(float low, float high);
    /// 0 to count - 1.
    int pick(int count);

private:
    std::uint64_t m_state;
};

/// Smooth noise over the plane, about one hill in each unit square. Values are 0 to 1.
class Noise
{
public:
    explicit Noise(std::uint32_t seed)
        : m_seed(seed)
    { }

    [[nodiscard]] float at(float x, float y) const;
    /// Octaves of at(), each twice as fine and half as strong as the one before.
    [[nodiscard]] float layered(float x, float y, int octaves) const;
    /// As layered(), with sharp crests: rock and mountain ridges.
    [[nodiscard]] float ridged(float x, float y, int octaves) const;

private:
    [[nodiscard]] float lattice(int x, int y) const;

    std::uint32_t m_seed;
};

} // namespace lumi::photos
