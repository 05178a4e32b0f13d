// SPDX-License-Identifier: MIT
// The tags that say where other parts of the block stand and how long the thumbnail is. Places
// are good only for the file they were read from: they are set anew with what they lead to.
#pragma once

namespace lumi {

inline constexpr int kExifPointer = 0x8769;             // in the first directory
inline constexpr int kGpsPointer = 0x8825;              // in the first directory
inline constexpr int kInteroperabilityPointer = 0xA005; // in the Exif directory
inline constexpr int kThumbnailOffset = 0x0201;         // in the second directory
inline constexpr int kThumbnailLength = 0x0202;         // in the second directory

} // namespace lumi
