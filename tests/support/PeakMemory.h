// SPDX-License-Identifier: MIT
#pragma once

namespace lumi::test {

/// How much more memory the process has held at any one time since this was made.
class PeakMemory
{
public:
    PeakMemory();

    /// In KB. 0 under the address sanitizer, which holds freed memory back, so that its figures
    /// say nothing; a huge number where the system tells no figures.
    [[nodiscard]] long growthKB() const;

private:
    long m_beforeKB;
};

} // namespace lumi::test
