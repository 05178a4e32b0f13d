// SPDX-License-Identifier: MIT
// The size of one value by its TIFF field type. Both Exif readers and whoever builds a block
// take their sizes from here.
#pragma once

/// Bytes a value takes, 0 for a type without a size (0, 6, 8 and all above 10).
[[nodiscard]] int typeSize(int type);
