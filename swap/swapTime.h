// SPDX-License-Identifier: MIT
// The store's clock. The index keeps whole seconds in 32 bits, so blocks are compared in the
// same measure in memory too: otherwise each block written in this run would miss in the next.
#pragma once

#include <QDateTime>

#include <cstdint>

namespace lumi {

/// Whole seconds since 1970-01-01 UTC, fractions cut off; of years past 2038 the low 32 bits.
/// A null time is 0.
[[nodiscard]] inline std::int32_t swapSeconds(const QDateTime &time)
{
    if (!time.isValid()) {
        return 0;
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(time.toSecsSinceEpoch()));
}

/// The time of an index field; swapSeconds() of it gives the same number again.
[[nodiscard]] inline QDateTime swapDateTime(std::int32_t seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds);
}

[[nodiscard]] inline bool sameSwapTime(const QDateTime &one, const QDateTime &other)
{
    return swapSeconds(one) == swapSeconds(other);
}

} // namespace lumi
