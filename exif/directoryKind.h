// SPDX-License-Identifier: MIT
// Tells directories apart by what they begin with. Their tags stand in the order of their
// numbers in nearly all photos, and the kinds have few numbers in common.
#pragma once

#include "exif/ExifListKind.h"

#include <QtGlobal>

#include <optional>

namespace lumi {

/// The kind of a directory whose first entry is this one; Ifd1 stands for Ifd0 as well. Nothing
/// when the type is none that a value can have.
/// @param second the second of the four bytes that hold the value or lead to it
[[nodiscard]] std::optional<ExifListKind> directoryKind(int tag, int type, quint32 count,
                                                        char second);

} // namespace lumi
