// SPDX-License-Identifier: MIT
// What a window that comes and goes may leave behind without anybody seeing it: memory, open
// files, decompressors, windows.
#pragma once

#include <functional>

namespace lumi::test {

/// Opens and closes something many times, number counting from 0, and fails the test if that
/// leaves anything behind. The first openings are not counted: caches fill then.
void leavesNothing(int times, const std::function<void(int number)> &open);

} // namespace lumi::test
