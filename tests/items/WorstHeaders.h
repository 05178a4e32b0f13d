// SPDX-License-Identifier: MIT
// Small files that cause as much decoding work as possible: huge pictures, hundreds of scans,
// restarts after each block, arithmetic coding.
#pragma once

#include "tests/items/HostileFiles.h"

namespace lumi::test {

/// At least forty, the same in every run.
[[nodiscard]] std::vector<HostileFile> worstHeaders();

/// A gray progressive picture of this many empty scans.
[[nodiscard]] QByteArray emptyScans(int width, int height, int scans);

} // namespace lumi::test
