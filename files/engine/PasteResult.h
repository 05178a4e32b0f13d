// SPDX-License-Identifier: MIT
#pragma once

namespace lumi {

/// How a paste ended.
enum class PasteResult : int {
    Missing = -1,         ///< a source or the target folder does not exist any more
    Done = 0,             ///< all of it
    SourceNotOpened = 1,  ///< a source can't be read or is not a regular file
    TargetNotMade = 2,    ///< a file or folder can't be made, or no name is free
    NoRoom = 3,           ///< too little free space on the target's file system
    NoBuffer = 4,         ///< no memory
    SourceNotRemoved = 5, ///< the copy is complete, but the source of the cut can't be removed
    NotWritten = 6,       ///< the copy failed and has been removed
};

} // namespace lumi
