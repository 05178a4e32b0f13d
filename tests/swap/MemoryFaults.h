// SPDX-License-Identifier: MIT
#pragma once

namespace lumi::test {

/// While it lives, new(std::nothrow) returns null for arrays.
class NoArrays
{
public:
    NoArrays();
    ~NoArrays();
    NoArrays(const NoArrays &) = delete;
    NoArrays &operator=(const NoArrays &) = delete;
};

} // namespace lumi::test
