// SPDX-License-Identifier: MIT
// Room on the file system that holds a path, in whole KB.
#pragma once

#include <QByteArray>
#include <QString>

/// Free KB for an ordinary user; -1 if the path is null or the call fails.
[[nodiscard]] int freeDiskKB(const QByteArray &path);

/// Size of the file system in KB; -1 if the path is null or the call fails.
[[nodiscard]] int totalDiskKB(const QByteArray &path);

namespace lumi {

/// Free KB on the file system of the photo store; -1 if the call fails.
[[nodiscard]] int freeDocumentsKB();

/// Free KB of the card if the path begins with the card's folder and the card is in, else of the
/// file system with the photo store. The paths are compared as texts.
[[nodiscard]] int freeVolumeKB(const QString &path);

/// Free KB from a block size in bytes and a count of blocks, at most INT_MAX. The order of the
/// steps determines the rounding: 3 blocks of 512 bytes are 1 KB.
[[nodiscard]] int blocksToFreeKB(qint64 blockSize, qint64 blocks);

} // namespace lumi
