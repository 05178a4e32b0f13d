// SPDX-License-Identifier: MIT
// A city by night across the river: rows of houses with lit windows, moon and stars.
#pragma once

#include "tools/photos/Canvas.h"
#include "tools/photos/Noise.h"

namespace lumi::photos {

void paintCity(Canvas &canvas, Random &random);

} // namespace lumi::photos
