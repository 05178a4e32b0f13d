// SPDX-License-Identifier: MIT
// What a camera says about its flash, packed into bits.
#pragma once

#include <QString>

namespace lumi {

/// A line for each thing that the bits say, with line feeds between them.
[[nodiscard]] QString flashText(int bits);

} // namespace lumi
