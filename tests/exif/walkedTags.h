// SPDX-License-Identifier: MIT
// The tags that a photo gives when it is walked.
#pragma once

#include "exif/read/FPVExifFile.h"

#include <memory>
#include <vector>

namespace lumi::test {

using WalkedTags = std::vector<std::unique_ptr<FPVExifTag>>;

/// What a caller that stops at the first null gets.
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
