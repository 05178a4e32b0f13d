// SPDX-License-Identifier: MIT
// Sizes of file systems, from the system or from a text file. The file lets tests and demos have a
// full disk without filling one.
#pragma once

#include "platform/Machine.h"

#include <QByteArray>

#include <optional>

namespace lumi {

/// Asks the file system; not ok for a null path or where the call fails.
[[nodiscard]] DiskFigures statDisk(const QByteArray &path);

/// Finds the figures of `path` in lines "path blocksize blocks available". The longest path that
/// equals or contains it counts. A block size of 0 means a failing file system. Null without a
/// line.
[[nodiscard]] std::optional<DiskFigures> findDiskFigures(const QByteArray &text,
                                                         const QByteArray &path);

} // namespace lumi
