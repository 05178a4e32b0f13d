// SPDX-License-Identifier: MIT
#include "bench/Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace lumi::bench {

double Row::value() const
{
    return difference ? ours - bare : ours / bare;
}

bool Row::kept() const
{
    return value() <= limit;
}

double milliseconds(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Row compare(const Budget &budget, const std::function<void()> &ours,
            const std::function<void()> &bare, const std::function<void()> &before)
{
    std::vector<double> oursTimes;
    std::vector<double> bareTimes;
    for (int round = 0; round <= budget.rounds; ++round) {
        before();
        const double bareTime = milliseconds(bare);
        before();
        const double oursTime = milliseconds(ours);
        if (round > 0) {
            bareTimes.push_back(bareTime);
            oursTimes.push_back(oursTime);
        }
    }
    return {budget.job, budget.reference, median(oursTimes), median(bareTimes), "ms", budget.limit,
            false};
}

namespace {

/// A figure of this process's memory.
long statusKiB(const char *name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        std::istringstream fields(line);
        std::string label;
        long kib = 0;
        if (fields >> label >> kib && label == name) {
            return kib;
        }
    }
    return 0;
}

} // namespace

long residentKiB()
{
    return statusKiB("VmRSS:");
}

long peakKiB()
{
    return statusKiB("VmHWM:");
}

bool print(const std::vector<Row> &rows)
{
    bool allKept = true;
    std::printf("%-56s %12s %12s %10s %10s %-9s %s\n", "job", "ours", "bare", "value", "limit", "",
                "compared with");
    for (const Row &row : rows) {
        const char *sign = row.difference ? "+" : "x";
        std::printf("%-56s %8.2f %-3s %8.2f %-3s %s%9.2f %s%9.2f %-9s %s\n", row.job.c_str(),
                    row.ours, row.unit, row.bare, row.unit, sign, row.value(), sign, row.limit,
                    row.kept() ? "kept" : "EXCEEDED", row.reference.c_str());
        allKept = allKept && row.kept();
    }
    return allKept;
}

} // namespace lumi::bench
