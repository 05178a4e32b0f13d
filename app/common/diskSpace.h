// SPDX-License-Identifier: MIT
// Room on the file system that holds a path, in whole KB.
#pragma once

#include <QByteArray>
#include <QString>

/// KB that an ordinary user may still write; -1 if the path is null or can't be asked.
[[nodiscard]] int freeDiskKB(const QByteArray &path);

/// Size of the file system in KB; -1 if the path is null or can't be asked.
[[nodiscard]] int totalDiskKB(const QByteArray &path);

namespace lumi {

/// Free KB where the photo store is, whatever the path at hand; -1 if it can't be asked.
[[nodiscard]] int freeDocumentsKB();

/// Free KB of the card whose folder's path begins the given one, if it is in, else of the file
/// system with the photo store. The beginnings are compared as texts.
[[nodiscard]] int freeVolumeKB(const QString &path);

/// Free KB out of a block size in bytes and a count of blocks, at most INT_MAX. The rounding
/// depends on the order of the steps: 3 blocks of 512 bytes are 1 KB.
[[nodiscard]] int blocksToFreeKB(qint64 blockSize, qint64 blocks);

} // namespace lumi
