// SPDX-License-Identifier: MIT
// The tags in the information records of a photo. The tags of the first group are never read: its
// record is made from other sources.
#pragma once

#include <array>

struct ExifInfoGroup
{
    const char *title;
    const int *tags;
    int count;
};

namespace lumi {

inline constexpr int kInfoBasicTags[] = {0x9003, 0x0100, 0x0101, 0x011A, 0x011B};
inline constexpr int kInfoExtensionTags[] = {
    0x829A, 0x829D, 0x8822, 0x8824, 0x9201, 0x9202, 0x9203, 0x9204, 0xA403, 0xA407, 0xA408, 0xA40A,
};
inline constexpr int kInfoOtherTags[] = {0x010F, 0x0110, 0x0131, 0x013B, 0x8298};

inline constexpr std::array<ExifInfoGroup, 3> kExifInfoGroups = {{
    {"Basic Information", kInfoBasicTags, std::size(kInfoBasicTags)},
    {"Extention", kInfoExtensionTags, std::size(kInfoExtensionTags)}, // sic
    {"Etc...", kInfoOtherTags, std::size(kInfoOtherTags)},
}};

} // namespace lumi
