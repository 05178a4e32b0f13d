// SPDX-License-Identifier: MIT
// Checks that windows that are opened and closed leave no memory, open files, decompressors or
// windows behind.
#pragma once

#include <functional>

namespace lumi::test {

/// Calls open() many times, with a number from 0 on, and fails the test if anything is left behind.
/// The first calls are not counted, because they fill caches.
void leavesNothing(int times, const std::function<void(int number)> &open);

} // namespace lumi::test
