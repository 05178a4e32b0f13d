// SPDX-License-Identifier: MIT
// The tags of one directory in the order of the file. Two tags are the same tag when they
// have the same number.
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

    /// The first tag of that number, lent; null when there is none.
    [[nodiscard]] FPVExifTag *findNumber(int number) const;

    /// Takes the tag over. It replaces the one of the same number at that one's place, else
    /// it becomes the last.
    void put(std::unique_ptr<FPVExifTag> tag);

    /// Removes the first tag of that number, if there is one.
    void removeNumber(int number);

protected:
    int compareItems(const FPVExifTag *one, const FPVExifTag *other) const override;
};

} // namespace lumi
