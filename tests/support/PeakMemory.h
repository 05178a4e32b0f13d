// SPDX-License-Identifier: MIT
#pragma once

namespace lumi::test {

/// The highest growth of the process's memory since the construction.
class PeakMemory
{
public:
    PeakMemory();

    /// In KB. 0 under the address sanitizer, which keeps freed memory, so that the figures are
    /// useless. A huge number if the system has no figures.
    [[nodiscard]] long growthKB() const;

private:
    long m_beforeKB;
};

} // namespace lumi::test
