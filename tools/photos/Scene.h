// SPDX-License-Identifier: MIT
// A motif of the sample photos. The same kind and seed give the same picture; another seed
// gives another place, time of day and weather of the same kind.
#pragma once

#include "tools/photos/Canvas.h"

#include <cstdint>

namespace lumi::photos {

enum class SceneKind : int { Mountains, Lake, Sea, Dunes, Forest, City };

inline constexpr int kSceneKinds = 6;

[[nodiscard]] Canvas paintScene(SceneKind kind, QSize photo, std::uint64_t seed);

} // namespace lumi::photos
