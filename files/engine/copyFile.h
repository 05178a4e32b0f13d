// SPDX-License-Identifier: MIT
// Copies one file block by block, for the import. Events run between two blocks, so that the
// import can show its progress and be cancelled.
#pragma once

class QString;

namespace lumi {

/// Results of copyFile(). Any other number is the QFileDevice::FileError of the file that could not
/// be opened or written.
enum CopyResult : int { CopyDone = 0, CopyNotRemoved = 3, CopyRefused = 5, CopyStopped = 6 };

/// Called after each block; false stops the copy.
using KeepGoing = bool (*)();

} // namespace lumi

/// Copies contents only: no dates, owners or modes. Nothing is synced. The target gets its name
/// when it is as long as the source; a failed copy leaves nothing.
/// A read error is treated as the end of the file. After CopyDone, callers must check that the
/// target exists and has the size of the source.
/// Events run before the first and after each block read.
/// @param src must be a regular file, else CopyRefused
/// @param dst if equal to src: CopyDone, and nothing is done
/// @param move removes the source at the end, even after a failed copy; no caller sets it
/// @param failIfExists if dst exists: CopyRefused. Otherwise an existing dst is removed once the
///        source is open, even if the copy fails, except that dst may not be src under another
///        name (CopyRefused)
/// @param keepGoing may be null
/// @param bufferSize bytes of a block, at least 4, at most 64 KB
[[nodiscard]] int copyFile(const QString &src, const QString &dst, bool move, bool failIfExists,
                           lumi::KeepGoing keepGoing, unsigned bufferSize);

/// The usual callback: true until the copy is cancelled.
[[nodiscard]] bool copyKeepGoing();
/// Applies until it is reset.
void setCopyCancelled(bool cancelled);

/// Whether less than this many KB are free where the photo store is. Part of the interface; no form
/// calls it.
[[nodiscard]] bool isSpaceShort(int kb);
