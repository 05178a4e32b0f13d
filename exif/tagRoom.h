// SPDX-License-Identifier: MIT
// Which tags stay when there is room for some of them only: those that lead to other parts of
// the block, then the smallest, and of equals the first. One overlong value so costs nothing
// but itself.
#pragma once

#include "exif/ExifTagList.h"

#include <span>

namespace lumi {

using ExifTagLists = std::span<ExifTagList *const>;

/// The bytes that the lists would take as directories if they had only those tags that take no
/// more than largest bytes each.
[[nodiscard]] qint64 sizeOfTags(ExifTagLists lists, qint64 largest);

/// Removes tags, the largest first and of equals the last, until the lists as directories take
/// no more than room bytes: the bytes of the values that went. Tags that say where something
/// stands go behind all others.
qint64 fitTags(ExifTagLists lists, qint64 room);

} // namespace lumi
