// SPDX-License-Identifier: MIT
// How the copy of a card, or of one of its files, ended.
#pragma once

namespace lumi {

enum class ImportKind : int {
    Done = 0,
    Cancelled = 1,
    MemoryFull = 2,
    CardAccess = 3, ///< has a text and a box, but is never returned
    AccessFailure = 4,
    Mismatch = 5,
};

} // namespace lumi
