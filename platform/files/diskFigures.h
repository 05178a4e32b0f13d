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

/// Looks `path` up in lines "path blocksize blocks available", of which the longest path that
/// is or holds it counts. Block size 0 stands for a failing file system. Null without a line.
[[nodiscard]] std::optional<DiskFigures> findDiskFigures(const QByteArray &text,
                                                         const QByteArray &path);

} // namespace lumi
