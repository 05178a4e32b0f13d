// SPDX-License-Identifier: MIT
// The keys of the browser form that stand for menu entries.
#pragma once

#include <Qt>

namespace lumi {

enum class FileKey { None, Copy, Cut, Paste, Delete };

[[nodiscard]] FileKey fileKey(int key, Qt::KeyboardModifiers modifiers);

/// Whether the key acts on photos only.
[[nodiscard]] constexpr bool needsPhoto(FileKey key)
{
    return key == FileKey::Cut || key == FileKey::Delete;
}

} // namespace lumi
