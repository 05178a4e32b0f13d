// SPDX-License-Identifier: MIT
#pragma once

namespace lumi::test {

/// While it lives, no array can be had from the allocator that answers null.
class NoArrays
{
public:
    NoArrays();
    ~NoArrays();
    NoArrays(const NoArrays &) = delete;
    NoArrays &operator=(const NoArrays &) = delete;
};

} // namespace lumi::test
