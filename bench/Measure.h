// SPDX-License-Identifier: MIT
// A budget of this program is the ratio of a job to a bare reference that does only the necessary
// work. Both run in turn in one process, so that a busy machine slows both, and their medians are
// compared.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace lumi::bench {

/// One line of the table.
struct Row
{
    std::string job;
    std::string reference;
    double ours;      ///< median, in `unit`
    double bare;      ///< median, in `unit`
    const char *unit; ///< "ms" or "KiB"
    double limit;     ///< largest allowed value of `value()`
    bool difference;  ///< the limit is on ours - bare, not on ours / bare

    [[nodiscard]] double value() const;
    [[nodiscard]] bool kept() const;
};

/// Milliseconds that one call of `work` takes.
double milliseconds(const std::function<void()> &work);

/// The largest allowed ratio of a job to its reference, and how often both are measured.
struct Budget
{
    std::string job;
    std::string reference;
    double limit;
    int rounds;
};

/// Runs `ours` and `bare` in turn, `budget.rounds` times after one warm-up round, and compares the
/// medians. `before` runs untimed ahead of each of the two.
Row compare(
    const Budget &budget, const std::function<void()> &ours, const std::function<void()> &bare,
    const std::function<void()> &before = [] {});

/// Median of `values`, which must not be empty.
double median(std::vector<double> values);

/// Resident memory of this process, in KiB: now, and the most it has been.
long residentKiB();
long peakKiB();

/// Prints the table. \return false if a row exceeds its limit.
bool print(const std::vector<Row> &rows);

} // namespace lumi::bench
