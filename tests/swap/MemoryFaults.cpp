// SPDX-License-Identifier: MIT
#include "tests/swap/MemoryFaults.h"

#include <cstddef>
#include <new>

namespace {

bool arraysFail = false;

} // namespace

void *operator new[](std::size_t size, const std::nothrow_t & /*tag*/) noexcept
{
    if (arraysFail) {
        return nullptr;
    }
    try {
        return ::operator new[](size);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

namespace lumi::test {

NoArrays::NoArrays()
{
    arraysFail = true;
}

NoArrays::~NoArrays()
{
    arraysFail = false;
}

} // namespace lumi::test
