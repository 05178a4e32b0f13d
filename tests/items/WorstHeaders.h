// SPDX-License-Identifier: MIT
// Photos of a few bytes that claim as much work as a decoder can be made to do: huge pictures,
// hundreds of scans, restarts after each block, arithmetic coding.
#pragma once

#include "tests/items/HostileFiles.h"

namespace lumi::test {

/// At least forty, the same in every run.
[[nodiscard]] std::vector<HostileFile> worstHeaders();

/// A gray progressive picture of this many scans, which hold nothing.
[[nodiscard]] QByteArray emptyScans(int width, int height, int scans);

} // namespace lumi::test
