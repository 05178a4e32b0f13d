// SPDX-License-Identifier: MIT
#pragma once

namespace lumi {

/// How a paste ended.
enum class PasteResult : int {
    Missing = -1,         ///< a source doesn't exist, or there is no folder to paste into any more
    Done = 0,             ///< all of it
    SourceNotOpened = 1,  ///< a source can't be read, or is no regular file
    TargetNotMade = 2,    ///< a file or folder can't be made, or no name is free
    NoRoom = 3,           ///< too little room on the target's file system
    NoBuffer = 4,         ///< no memory
    SourceNotRemoved = 5, ///< the copy is whole, but what was cut can't be removed
    NotWritten = 6,       ///< the copy is not whole, and gone if it could be removed
};

} // namespace lumi
