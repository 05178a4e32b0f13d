// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace lumi {

/// Milliseconds to wait after a picture whose decode began `elapsed` ms ago: the delay, or 0 if
/// the decode took more than twice as long.
[[nodiscard]] int slideWait(int delay, qint64 elapsed);

} // namespace lumi
