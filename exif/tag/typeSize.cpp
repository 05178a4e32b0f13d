// SPDX-License-Identifier: MIT
#include "exif/tag/typeSize.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::array<int, 11> kTypeSizes = {
    0, // no type
    1, // BYTE
    1, // ASCII
    2, // SHORT
    4, // LONG
    8, // RATIONAL
    0, // no type
    1, // UNDEFINED
    0, // no type
    4, // SLONG
    8, // SRATIONAL
};

} // namespace

int typeSize(int type)
{
    if (type < 0 || type >= static_cast<int>(kTypeSizes.size())) {
        return 0;
    }
    return kTypeSizes[static_cast<std::size_t>(type)];
}
