// SPDX-License-Identifier: MIT
// The copy of one file, block by block, with a say in between: the import of a card runs on
// it, shows its progress and can be cancelled between two blocks.
#pragma once

class QString;

namespace lumi {

/// What copyFile() answers; any other number is the QFileDevice::FileError of the file that
/// could not be opened or written.
enum CopyResult : int { CopyDone = 0, CopyNotRemoved = 3, CopyRefused = 5, CopyStopped = 6 };

/// Asked after each block; false stops the copy.
using KeepGoing = bool (*)();

} // namespace lumi

/// Copies contents only: no dates, owners or modes, and nothing is synced. A target that this
/// call has begun doesn't stay when it fails, unless it can't be removed either. But a read
/// error looks like the end of the file, and a write that took a part of a block like a whole
/// one: CopyDone means a whole copy only if the sizes agree. Events run before the first and
/// after each block read.
/// @param src only a regular file is read; else CopyRefused
/// @param dst if it is src: CopyDone, and nothing is done
/// @param move removes the source at the end, even after a failure: it is only safe where the
///        copy can't fail, and nobody sets it
/// @param failIfExists CopyRefused if there is a dst; otherwise CopyRefused if dst is src under
///        another name, and any other old one is lost once the source is open, even if the copy
///        fails
/// @param keepGoing may be null
/// @param bufferSize bytes of a block, at least 4, at most 64 KB
[[nodiscard]] int copyFile(const QString &src, const QString &dst, bool move, bool failIfExists,
                           lumi::KeepGoing keepGoing, unsigned bufferSize);

/// The usual callback: true until the copy is cancelled.
[[nodiscard]] bool copyKeepGoing();
/// Holds until it is set back.
void setCopyCancelled(bool cancelled);

/// Whether less than this many KB are free where the photo store is. Part of the interface,
/// though none of today's forms asks.
[[nodiscard]] bool isSpaceShort(int kb);
