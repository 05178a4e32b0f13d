// SPDX-License-Identifier: MIT
// Copies one file block by block. The import of a card uses it: events run between two blocks, so
// that the import shows its progress and can be cancelled.
#pragma once

class QString;

namespace lumi {

/// What copyFile() answers; any other number is the QFileDevice::FileError of the file that
/// could not be opened or written.
enum CopyResult : int { CopyDone = 0, CopyNotRemoved = 3, CopyRefused = 5, CopyStopped = 6 };

/// Asked after each block; false stops the copy.
using KeepGoing = bool (*)();

} // namespace lumi

/// Copies contents only: no dates, owners or modes. Nothing is synced. The target gets its name
/// when it is as long as the source; a failed copy leaves nothing.
/// A read error looks like the end of the file. CopyDone therefore means a whole copy only if
/// there is a target of the source's size; callers have to look.
/// Events run before the first and after each block read.
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
