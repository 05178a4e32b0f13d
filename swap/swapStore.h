// SPDX-License-Identifier: MIT
// The swap store as the rest of the program sees it. All functions take the full path of the source
// file. Without an open store, or if the path has no "/" behind its first character, they do
// nothing and return false. Even a look-up makes a control for a new folder.
#pragma once

#include <QString>

class QImage;
class QSize;
class SwapSystem;

/// The process-wide handle. Stores a non-null pointer; returns the stored one. The destructor of a
/// store resets it.
SwapSystem *swapSystem(SwapSystem *set = nullptr);

namespace lumi {
/// Makes the handle null if it points to this store.
void releaseSwapSystem(const SwapSystem *gone);
} // namespace lumi

// NOLINTBEGIN(readability-identifier-naming): parts of the interface

/// False on a miss; param is the width of the thumbnail, kind 'l', 's' or 'd'.
[[nodiscard]] bool SwapLoad(QString path, QImage *image, int param, char kind);
[[nodiscard]] bool SwapLoad(QString path, unsigned char *buf, int *size, int param);

/// False if nothing could be stored.
bool SwapAppend(QString path, QImage *image, int param, char kind);
bool SwapAppend(QString path, unsigned char *buf, int size, int param);

/// The size kept with the oldest block of this file, (-1, -1) if none was set.
[[nodiscard]] bool SwapGetSize(QString path, QSize *size);
bool SwapSetSize(QString path, const QSize *size);

// NOLINTEND(readability-identifier-naming)
