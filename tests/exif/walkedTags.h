// SPDX-License-Identifier: MIT
// The tags that the walking reader finds in a photo.
#pragma once

#include "exif/read/FPVExifFile.h"

#include <memory>
#include <vector>

namespace lumi::test {

using WalkedTags = std::vector<std::unique_ptr<FPVExifTag>>;

/// All tags up to the first null.
[[nodiscard]] inline WalkedTags walk(const QString &path)
{
    WalkedTags tags;
    FPVExifFile file(path);
    while (FPVExifTag *tag = file.nextTag()) {
        tags.emplace_back(tag);
    }
    return tags;
}

} // namespace lumi::test
