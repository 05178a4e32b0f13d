// SPDX-License-Identifier: MIT
// The tags of one directory in the order of the file. Tags with the same number are equal.
// Owns: its tags.
#pragma once

#include "exif/tag/FPVExifTag.h"
#include "platform/toolkit/PtrList.h"

#include <memory>

namespace lumi {

class ExifTagList : public PtrList<FPVExifTag>
{
public:
    ExifTagList() { setAutoDelete(true); }

    /// The first tag of that number; null if there is none.
    [[nodiscard]] FPVExifTag *findNumber(int number) const;

    /// Takes ownership of the tag. It replaces a tag of the same number in its place, or becomes
    /// the last one.
    void put(std::unique_ptr<FPVExifTag> tag);

    /// Removes the first tag of that number, if there is one.
    void removeNumber(int number);

protected:
    int compareItems(const FPVExifTag *one, const FPVExifTag *other) const override;
};

} // namespace lumi
