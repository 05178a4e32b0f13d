// SPDX-License-Identifier: MIT
#include "exif/tag/ExifTagList.h"

namespace lumi {

FPVExifTag *ExifTagList::findNumber(int number) const
{
    for (FPVExifTag *tag : *this) {
        if (tag->tag() == number) {
            return tag;
        }
    }
    return nullptr;
}

void ExifTagList::put(std::unique_ptr<FPVExifTag> tag)
{
    const int place = find(tag.get());
    if (place < 0) {
        append(tag.release());
        return;
    }
    remove(place);
    insert(place, tag.release());
}

void ExifTagList::removeNumber(int number)
{
    const int place = findRef(findNumber(number));
    if (place >= 0) {
        remove(place);
    }
}

int ExifTagList::compareItems(const FPVExifTag *one, const FPVExifTag *other) const
{
    return one->tag() == other->tag() ? 0 : 1;
}

} // namespace lumi
