// SPDX-License-Identifier: MIT
// Times of the store. The index has whole seconds in 32 bits, so times in memory are compared in
// whole seconds too. Otherwise no block would be found after a restart.
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
